#pragma once

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <Corrade/Utility/Debug.h>
#include <Magnum/GL/Context.h>
#include <Magnum/Platform/GLContext.h>

namespace QuorvaneEngine::Test {

/** An invisible window whose OpenGL context is current and known to Magnum while the object lives. */
class GlWindow {
public:
    GlWindow() {
        if(!glfwInit()) return;
        glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 3);
        glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 3);
        glfwWindowHint(GLFW_OPENGL_PROFILE, GLFW_OPENGL_CORE_PROFILE);
        glfwWindowHint(GLFW_VISIBLE, GLFW_FALSE);
        _window = glfwCreateWindow(64, 64, "Test", nullptr, nullptr);
        if(!_window) return;
        glfwMakeContextCurrent(_window);
        // A list of extensions, which nobody wants to read.
        const Corrade::Utility::Debug silent{nullptr};
        _ready = _context.tryCreate();
    }

    // GLFW goes on: once it has unloaded the driver, the leak sanitizer takes the driver's memory for lost.
    ~GlWindow() {
        if(_window) glfwDestroyWindow(_window);
    }

    GlWindow(const GlWindow&) = delete;
    GlWindow& operator=(const GlWindow&) = delete;

    bool isReady() const { return _ready; }

    /** Why the object is not ready. */
    static const char* reason() {
        const char* description = nullptr;
        glfwGetError(&description);
        return description ? description : "OpenGL 3.3 is not there";
    }

private:
    GLFWwindow* _window = nullptr;
    Magnum::Platform::GLContext _context{Magnum::NoCreate};
    bool _ready = false;
};

}
