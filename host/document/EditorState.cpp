#include "QuorvaneEditor/EditorState.h"

#include <cstdlib>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Debug.h>

namespace QuorvaneEngine {

using Corrade::Utility::Debug;
using Corrade::Utility::Error;

struct EditorState::View {
    Containers::String title;
    bool open = true;
};

EditorState::EditorState() = default;

EditorState::~EditorState() = default;

UnsignedInt EditorState::registerView(Containers::StringView title) {
    for(UnsignedInt i = 0; i != viewCount(); ++i)
        if(_views[i]->title == title) return i;
    Containers::arrayAppend(_views, Containers::Pointer<View>{Corrade::InPlaceInit, View{title}});
    return viewCount() - 1;
}

bool& EditorState::isViewOpen(UnsignedInt view) { return this->view(view, "isViewOpen").open; }

Containers::StringView EditorState::viewTitle(UnsignedInt view) const { return this->view(view, "viewTitle").title; }

UnsignedInt EditorState::viewCount() const { return UnsignedInt(_views.size()); }

EditorState::View& EditorState::view(UnsignedInt view, const char* function) const {
    if(view >= viewCount()) {
        Error{} << "EditorState::" << Debug::nospace << function << Debug::nospace << "(): no view with id" << view
                << Debug::nospace << ", have" << viewCount();
        std::abort();
    }
    return const_cast<View&>(*_views[view]);
}

}
