#pragma once

#include <vector>

#include <Magnum/GL/Framebuffer.h>
#include <Magnum/GL/Texture.h>

namespace QuorvaneEngine::Test {

/** One call that changes what a framebuffer draws to or reads from. */
struct Attachment {
    Magnum::GL::Framebuffer* framebuffer;

    /** OpenGL's name of the texture that was attached; 0 where one was detached. */
    Magnum::UnsignedInt texture;
};

/** All such calls of the program since its start, in order. For programs that CMake's quorvane_log_attachments() was called for. */
std::vector<Attachment>& attachmentLog();

}
