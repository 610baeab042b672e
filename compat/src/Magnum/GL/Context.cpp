#include "Magnum/GL/Context.h"

#include <dlfcn.h>
#include <epoxy/gl.h>

#include "Corrade/Containers/Pair.h"
#include "Corrade/Containers/StringView.h"
#include "Corrade/Utility/Assert.h"
#include "Magnum/GL/DefaultFramebuffer.h"

namespace Magnum::GL {

namespace {

thread_local Context* currentContext = nullptr;

// Without a context the loader of entry points would abort. So the libraries that make one are asked first, and only
// those that the program has loaded already.
bool isAnyContextCurrent() {
    constexpr const char* sources[][2]{{"libGLX.so.0", "glXGetCurrentContext"}, {"libGL.so.1", "glXGetCurrentContext"},
        {"libEGL.so.1", "eglGetCurrentContext"}};
    for(const auto& [library, function]: sources) {
        void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
        if(!handle) continue;
        const auto current = reinterpret_cast<void* (*)()>(dlsym(handle, function));
        const bool found = current && current();
        dlclose(handle);
        if(found) return true;
    }
    return false;
}

Containers::StringView string(GLenum name) { return reinterpret_cast<const char*>(glGetString(name)); }

} // namespace

bool Context::hasCurrent() { return currentContext; }

Context& Context::current() {
    CORRADE_ASSERT(currentContext, "GL::Context::current(): no current context", *currentContext);
    return *currentContext;
}

Context::~Context() {
    if(currentContext == this) currentContext = nullptr;
}

bool Context::tryCreate() {
    CORRADE_ASSERT(currentContext != this, "Platform::Context::tryCreate(): context already created", false);
    const int version = isAnyContextCurrent() ? epoxy_gl_version() : 0;
    if(version < 30) {
        Error{} << "GL::Context: unsupported OpenGL version" << Containers::pair(version / 10, version % 10);
        return false;
    }
    CORRADE_ASSERT(!currentContext, "GL::Context: Another context currently active", false);
    currentContext = this;
    Debug{} << "Renderer:" << string(GL_RENDERER).trimmed() << "by" << string(GL_VENDOR);
    Debug{} << "OpenGL version:" << string(GL_VERSION);

    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    defaultFramebuffer._viewport = Range2Di::fromSize({viewport[0], viewport[1]}, {viewport[2], viewport[3]});
    return true;
}

void Context::create() {
    if(!tryCreate()) std::exit(1);
}

void Context::resetState(States) {}

} // namespace Magnum::GL
