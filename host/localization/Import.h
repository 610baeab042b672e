#pragma once

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include "ImportFiles.h"
#include "QuorvaneEditor/Host.h"
#include "TextDigest.h"

namespace QuorvaneEngine {

class FileSystem;
class LocalizationReport;
struct Progress;

/** Takes terms over into a project, in three steps: files are read, which may refuse; then compared with the project, which
    gives the report; then the project is changed, in one undo step. A preview leaves the last step out.

    Nothing is ever deleted: a term that no file has keeps its texts, and an empty text changes nothing. A text that is new or
    differs takes the fingerprint of today's source; one that is as it was stays as it was, stale ones too, so that an export that
    comes back untouched changes nothing, unless @ref ImportOptions::isConfirming says that what comes back is right. */
class QUORVANE_API Import {
public:
    /** @param editor           must outlive the import; its project must not change between @ref compare() and @ref apply()
        @param defaultLanguage  index into @ref AllLanguages ; its file makes terms and changes their own texts
        @param progress         may be null, else must outlive the import. Where it is cancelled, the step that runs returns false
            without a refusal, and no further step may follow. */
    explicit Import(QuorvaneEditor& editor, UnsignedInt defaultLanguage, const ImportOptions& options = {},
        Progress* progress = nullptr);
    ~Import();
    Import(const Import&) = delete;
    Import& operator=(const Import&) = delete;

    /** Reads a folder or a ZIP archive: `<code>/<namespace>.json` and `<code>.json`. Other files are passed over; of these, one
        that is refused refuses the whole set. Does not look at the project: may run on any thread.
        @param path     absolute
        @return whether all was read; @ref refusals() has something otherwise */
    bool read(FileSystem& fileSystem, Containers::StringView path);

    /** The languages that were read, as indices into @ref AllLanguages . */
    Containers::ArrayView<const UnsignedInt> languages() const;

    /** Why nothing is imported: each begins with the file, then line and column where they are known, with ": " between. */
    Containers::ArrayView<const Containers::String> refusals() const;

    /** Whether nothing is imported because the system does not let read it, rather than for what it holds. */
    bool isInaccessible() const;

    /** Whether files were passed over whose code no language has, but one has a code much like it: the report names them.
        Never where it was said which languages are read. */
    bool lacksLanguages() const;

    /** Whether @ref ImportOptions::map has a name that no file or folder has: the report names it. */
    bool hasUnusedMappings() const;

    /** Finds out what is to be done. To be called after @ref read() , and again where the project has changed since. Reads the project's
        document and no index of it: may run on any thread while nobody changes the project.
        @param report   receives what becomes of every text
        @return whether the project can take it; @ref refusals() has something otherwise */
    bool compare(LocalizationReport& report);

    /** Whether there is nothing to apply: all is as it was. After @ref compare() . */
    bool isEmpty() const;

    /** What the project has in the place of all that is to change, and the source texts of the translations among it: a report says of
        which terms that is, and not what would be lost. After @ref compare() . */
    TextDigest replaced() const;

    /** Changes the project, as one group; nothing where all is as it was. To be called once, on the GUI thread.
        @param languages    those that the files brought are appended
        @return the group of the changes, -1 where there was nothing to change */
    Int apply(Containers::Array<UnsignedInt>& languages);

private:
    struct Data;

    Containers::Pointer<Data> _data;
};

}
