#include "Utils/Dialogs.h"

#include <csignal>
#include <string>
#include <vector>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/Pair.h>
#include <Corrade/Utility/Debug.h>
#include <Corrade/Utility/Path.h>
#include <portable-file-dialogs.h>

namespace QuorvaneEngine {

namespace {

using Corrade::Containers::Array;
using Corrade::Containers::String;
using Corrade::Containers::StringIterable;
using Corrade::Containers::StringView;
namespace Path = Corrade::Utility::Path;

// Icons are handed on as numbers.
static_assert(pfd::icon(NotificationIcon::Info) == pfd::icon::info);
static_assert(pfd::icon(NotificationIcon::Warning) == pfd::icon::warning);
static_assert(pfd::icon(NotificationIcon::Error) == pfd::icon::error);
static_assert(pfd::icon(NotificationIcon::Question) == pfd::icon::question);

/** Lets the dialog library hear how its child processes end, whatever the host does about its own. */
class ChildSignal {
public:
#ifdef SIGCHLD
    ChildSignal() {
        struct sigaction byDefault {};
        byDefault.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &byDefault, &_before);
    }
    ~ChildSignal() { sigaction(SIGCHLD, &_before, nullptr); }
#else
    ChildSignal() {}
#endif

    ChildSignal(const ChildSignal&) = delete;
    ChildSignal& operator=(const ChildSignal&) = delete;

private:
#ifdef SIGCHLD
    struct sigaction _before {};
#endif
};

/** Without a program to show it, a dialog would look like one that the user cancels at once. */
bool requireProgram(const char* const function) {
    if(pfd::settings::available()) return true;
    Corrade::Utility::Warning{} << function << Corrade::Utility::Warning::nospace
                                << "(): no program shows dialogs here, install zenity or kdialog";
    return false;
}

std::string text(const StringView view) {
    return view.isEmpty() ? std::string{} : std::string{view.data(), view.size()};
}

std::string existingAncestor(const StringView path) {
    StringView ancestor = path;
    while(!ancestor.isEmpty() && !Path::exists(ancestor)) ancestor = Path::split(ancestor).first();
    return text(ancestor);
}

std::vector<std::string> filterList(const StringIterable& filters) {
    std::vector<std::string> list;
    list.reserve(filters.size());
    for(const StringView filter: filters) list.push_back(text(filter));
    return list;
}

String answer(const std::string& path) {
    return path.empty() ? String{} : String{Path::fromNativeSeparators(StringView{path.data(), path.size()})};
}

}

bool areDialogsAvailable() {
    const ChildSignal signal;
    return pfd::settings::available();
}

Array<String> openFileDialog(
    const StringView title, const StringView defaultPath, const StringIterable& filters, const bool multiselect) {
    const ChildSignal signal;
    if(!requireProgram("openFileDialog")) return {};
    const std::vector<std::string> chosen = pfd::open_file{text(title), existingAncestor(defaultPath),
        filterList(filters), multiselect ? pfd::opt::multiselect : pfd::opt::none}
                                                .result();
    Array<String> paths;
    Corrade::Containers::arrayReserve(paths, chosen.size());
    for(const std::string& path: chosen) Corrade::Containers::arrayAppend(paths, answer(path));
    return paths;
}

String saveFileDialog(const StringView title, const StringView defaultPath, const StringIterable& filters) {
    const ChildSignal signal;
    if(!requireProgram("saveFileDialog")) return {};
    return answer(
        pfd::save_file{text(title), existingAncestor(defaultPath), filterList(filters), pfd::opt::none}.result());
}

String openFolderDialog(const StringView title, const StringView defaultPath) {
    const ChildSignal signal;
    if(!requireProgram("openFolderDialog")) return {};
    return answer(pfd::select_folder{text(title), text(defaultPath), pfd::opt::none}.result());
}

void notification(const StringView title, const StringView message, const NotificationIcon icon) {
    const ChildSignal signal;
    if(!requireProgram("notification")) return;
    // Discarded at once, which waits for the process that notifies.
    pfd::notify{text(title), text(message), pfd::icon(icon)};
}

}
