#include "app/Renderer.h"

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Utility/Debug.h>
#include <Magnum/GL/Context.h>
#include <Magnum/GL/DefaultFramebuffer.h>
#include <Magnum/GL/Renderer.h>
#include <Magnum/GL/Texture.h>
#include <Magnum/ImageView.h>
#include <Magnum/Math/Color.h>
#include <Magnum/Math/Range.h>
#include <Magnum/PixelFormat.h>
#include <Magnum/Platform/GLContext.h>
#include <imgui.h>
#include <imgui_impl_glfw.h>
#include <imgui_impl_opengl3.h>

#include "app/DesktopWindow.h"
#include "app/PngFile.h"
#include "app/ViewLetters.h"

namespace QuorvaneEngine {

namespace GL = Magnum::GL;

namespace {

/** Around OpenGL calls that do not go through Magnum, which otherwise relies on the state that it has set itself. */
class ForeignCalls {
public:
    ForeignCalls() { GL::Context::current().resetState(GL::Context::State::EnterExternal); }
    ~ForeignCalls() { GL::Context::current().resetState(GL::Context::State::ExitExternal); }
    ForeignCalls(const ForeignCalls&) = delete;
    ForeignCalls& operator=(const ForeignCalls&) = delete;
};

}

struct Renderer::State {
    explicit State(GLFWwindow* window): window{window} {}

    Magnum::Vector2i size() const {
        int width = 0;
        int height = 0;
        glfwGetFramebufferSize(window, &width, &height);
        return {width, height};
    }

    GLFWwindow* window;
    Magnum::Platform::GLContext context{Magnum::NoCreate};
    bool ready = false;
};

Renderer::Renderer(DesktopWindow& window) {
    _state.emplace(window.handle());
    {
        // A list of extensions, which is of no use to the user.
        const Corrade::Utility::Debug silent{nullptr};
        if(!_state->context.tryCreate()) return;
    }
    const ForeignCalls foreign;
    ImGui_ImplGlfw_InitForOpenGL(_state->window, true);
    ImGui_ImplOpenGL3_Init("#version 330 core");
    _state->ready = true;
}

Renderer::~Renderer() {
    if(!_state->ready) return;
    const ForeignCalls foreign;
    ImGui_ImplOpenGL3_Shutdown();
    ImGui_ImplGlfw_Shutdown();
}

bool Renderer::isReady() const { return _state->ready; }

void Renderer::beginFrame() {
    const ForeignCalls foreign;
    ImGui_ImplOpenGL3_NewFrame();
    ImGui_ImplGlfw_NewFrame();
}

void Renderer::render() {
    GL::defaultFramebuffer.setViewport({{}, _state->size()});
    GL::defaultFramebuffer.bind();
    GL::Renderer::setClearColor(Magnum::Color4{0.0f, 0.0f, 0.0f, 1.0f});
    GL::defaultFramebuffer.clear(GL::FramebufferClear::Color);
    ImDrawData& drawData = *ImGui::GetDrawData();
    fitViewLetters(drawData);
    resolveTextures(drawData);
    const ForeignCalls foreign;
    ImGui_ImplOpenGL3_RenderDrawData(&drawData);
}

bool Renderer::writeScreenshot(Containers::StringView path) {
    const Magnum::Vector2i size = _state->size();
    Containers::Array<unsigned char> pixels{Corrade::ValueInit, std::size_t(size.x()) * std::size_t(size.y()) * 4};
    GL::defaultFramebuffer.read({{}, size}, Magnum::MutableImageView2D{Magnum::PixelFormat::RGBA8Unorm, size, pixels});
    return writePng(path, UnsignedInt(size.x()), UnsignedInt(size.y()), pixels);
}

void resolveTextures(ImDrawData& drawData) {
    for(ImDrawList* list: drawData.CmdLists)
        for(ImDrawCmd& command: list->CmdBuffer)
            // The GUI's own textures come with their data; a view's is an address alone.
            if(!command.TexRef._TexData && command.TexRef._TexID != ImTextureID_Invalid)
                command.TexRef._TexID = reinterpret_cast<GL::Texture2D*>(command.TexRef._TexID)->id();
}

}
