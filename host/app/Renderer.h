#pragma once

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

struct ImDrawData;

namespace QuorvaneEngine {

class DesktopWindow;

/** Draws the current GUI context into a window, and owns the OpenGL context that views draw with.

    A texture that a view hands to the GUI is named by the address of its `GL::Texture2D`, which must stay until the frame is
    rendered. */
class QUORVANE_API Renderer {
public:
    /** @param window   open; must outlive the renderer, as must the GUI context */
    explicit Renderer(DesktopWindow& window);
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /** Whether OpenGL is there in the version that is needed; the reason why not was printed. */
    bool isReady() const;

    /** Hands input and sizes over to the GUI, before its frame begins. */
    void beginFrame();

    /** Clears the window and draws the frame that the GUI has rendered, once. */
    void render();

    /** Writes what was rendered last, before it is presented, as a PNG file. */
    bool writeScreenshot(Containers::StringView path);

private:
    struct State;

    Containers::Pointer<State> _state;
};

/** Replaces the addresses of textures in the draw commands by OpenGL's names. The GUI's own textures are left alone. */
QUORVANE_API void resolveTextures(ImDrawData& drawData);

}
