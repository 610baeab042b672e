#include "app/ProjectAccess.h"

#include <utility>

#include <Corrade/Utility/Debug.h>

#include "app/MessageLog.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine {

bool ProjectAccess::take(const Containers::StringView folder) {
    FileError refusal;
    const bool isTaken = _session->tryLock(folder, refusal);
    _refusal = std::move(refusal);
    return isTaken;
}

void ProjectAccess::begin(const Kind kind) {
    if(_refusal.path != _session->folder()) _refusal = {};
    set(kind);
}

void ProjectAccess::set(const Kind kind) {
    _kind = kind;
    if(kind != Kind::Read) _obstacle = {};
    else _obstacle = _refusal.reason.isEmpty() ? Containers::String{"it was opened read-only"} : _refusal.reason;
}

bool ProjectAccess::update(MessageLog& log) {
    if(_kind == Kind::Picture || _session->folder().isEmpty() || (_kind == Kind::Write && _session->isLocked()))
        return false;
    const Kind former = _kind;
    const Containers::String folder{_session->folder()};
    set(take(folder) ? Kind::Write : Kind::Read);
    if(former == Kind::Write && _kind == Kind::Read)
        Corrade::Utility::Warning{} << "ProjectAccess::update():" << folder << Corrade::Utility::Warning::nospace << ":"
                                    << _refusal.reason << Corrade::Utility::Warning::nospace
                                    << "; it is read-only here until that program has closed it";
    else if(former == Kind::Read && _kind == Kind::Write)
        log.note("No other program has " + folder + " any more: it can be saved");
    else if(_kind == Kind::Write && _session->isLocked())
        log.note("Locked " + folder + " again, as its folder .editor had been removed");
    return _kind != former;
}

}
