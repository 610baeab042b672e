#pragma once

#include <cstdint>
#include <memory>

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/String.h>

#include <rapidjson/document.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

class SteppedJsonWriter;
class EditorSession;
class FileSystem;

/** Keeps a copy of unsaved changes for the case of a crash, in the file `.editor/autosave` of the project: some seconds after the last
    change, whenever there are some, and in spite of changes when the oldest of them is too old. The document is written out a few milliseconds a
    frame, begun anew with each change, and a job puts the bytes on the disk, with the rights that `project.json` has: first aside, then in place. What
    cannot be written is tried again after a while. The copy goes when the project is saved or undone to what is saved, and when
    it is left behind on purpose.

    The file has a line with the format's name and version, the fingerprint of the saved state that it belongs to, the size in bytes of what
    follows and its fingerprint; what follows is the document as JSON text, with U+FFFD in place of bytes that are no UTF-8. Belongs to the GUI thread. */
class QUORVANE_API Autosave {
public:
    /** What was found when a project was opened. */
    enum class Found : std::uint8_t {
        Nothing,
        Changes, /**< of the project as it was saved last */
        Outdated /**< of a project whose files were other ones */
    };

    /** Seconds without a change before the copy is written. */
    static constexpr double Quiet = 3.0;

    /** Seconds after which a change is kept though there are others all the time; and for how much longer that may take a few milliseconds a frame,
        before it is done in one go. */
    static constexpr double OldestAge = 20.0;
    static constexpr double Grace = 2.0;

    /** Seconds before what failed is tried again, where nothing changes. */
    static constexpr double RetryPeriod = 30.0;

    /** Nanoseconds since any moment, by which a frame's part is measured. */
    using Clock = std::int64_t (*)();

    /** @param session  must outlive this object, as must the others
        @param clock    null for the machine's */
    explicit Autosave(EditorSession& session, JobSystem& jobs, FileSystem& files, Clock clock = nullptr);
    ~Autosave();
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    /** Turns to the project that was just opened. What an earlier program left behind waits for @ref restore() or @ref discard() , and
        nothing is kept before. A file that cannot be read, is cut, or is none of these is a warning, and renamed to
        `.editor/autosave.unreadable`, in place of an older one, so that a newer version or a patient person may have it.
        Where the document has unsaved changes of its own, as when another program's project becomes this one's, there is nothing to choose: what was found
        is renamed to `.editor/autosave.of-another`, or that with the first number that is free, and the new name is a warning. Where that
        fails, the file stays, and nothing is kept.
        What a program that ended in the middle has left aside is removed.
        @param isWriting    whether the project is this program's to write; else its copy is another one's: nothing is done, and what is on its way to
            the disk is not put in place any more */
    Found begin(bool isWriting);

    /** Takes what was found over as the document, unsaved. The file stays until it is saved. */
    void restore();

    /** Removes what was found, or what is kept. */
    void discard();

    /** Leaves the project behind, with nothing kept, unless what was found still waits. */
    void end();

    /** Does what is to be done in this frame; between two frames.
        @param now  in seconds */
    void update(double now);

    /** Keeps unsaved changes in this very moment, for who is about to end without a question. Where they cannot be kept, as in a project that is another
        program's to write, or while what was found waits for an answer, a warning says that they are lost. */
    void keepNow();

    /** Whether some of the document is to be written out in the next frame. */
    bool isBusy() const { return bool(_writer); }

private:
    struct Task;
    struct Copy;

    Containers::String place(const char* name) const;
    Containers::String aside(const char* suffix) const;
    void removeAsides();
    void cancelTask();
    Found read();
    void setAside(const Containers::String& path);
    bool isReady(double now);
    bool takeResult(double now);
    Copy copy();
    void dropWriter();
    void keep();

    EditorSession* _session;
    JobSystem* _jobs;
    FileSystem* _files;
    Clock _clock;

    /** Of the project; empty where nothing is done. */
    Containers::String _folder;

    /** Whether there is a project whose copy is not this program's to write. */
    bool _isRefused = false;

    Containers::Pointer<rapidjson::Document> _found;
    Containers::Pointer<SteppedJsonWriter> _writer;

    /** The job that runs, or ran last. */
    std::shared_ptr<Task> _task;
    Containers::String _failure;

    /** Whether there may be a file. */
    bool _isKept = false;

    /** Revisions of the document: as it was last seen, and as it is kept. */
    Int _seenRevision = -1;
    Int _keptRevision = -1;
    Int _failedRevision = -1;
    double _changed = 0.0;

    /** Since when there are changes that are not on their way to the disk. */
    bool _isWaiting = false;
    double _waitsSince = 0.0;
    double _retry = 0.0;
};

}
