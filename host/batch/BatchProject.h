#pragma once

#include <vector>

#include "batch/BatchOptions.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine {

class BatchOutput;

/** The project that a command works on. */
class BatchProject {
public:
    /** @param options      must outlive the project, as must @p output */
    explicit BatchProject(const BatchOptions& options, BatchOutput& output): _options{options}, _output{output} {}

    /** Opens it and looks whether its languages and terms are what the tools take for granted. What is wrong is printed. */
    BatchResult open();

    /** Writes what has changed in it. What is wrong is printed. */
    BatchResult save();

    EditorSession& session() { return _session; }

    /** What its messages call it: the folder as the user typed it. */
    const std::string& name() const { return _options.project; }

    /** Indices into @ref AllLanguages , in the project's order; none where it does not name any. Those that the table does not have
        are left out. */
    const std::vector<UnsignedInt>& languages() const { return _languages; }

    /** Those that were asked for, else all; the default language where the project names none. */
    std::vector<UnsignedInt> chosenLanguages() const;

    /** Of the source texts: what the project marks, else what was asked for, else English. */
    UnsignedInt defaultLanguage() const { return _defaultLanguage; }

private:
    BatchResult findFolder();
    BatchResult readLanguages();
    template <class Call> bool run(const char* what, Call call);

    const BatchOptions& _options;
    BatchOutput& _output;
    EditorSession _session;
    std::vector<UnsignedInt> _languages;
    UnsignedInt _defaultLanguage = 0;
};

/** A path from the root of the file system, without "." and "..". */
std::string absolutePath(const std::string& path);

}
