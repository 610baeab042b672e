#include "AttachmentLog.h"

using Magnum::GL::Framebuffer;
using BufferAttachment = Framebuffer::BufferAttachment;

namespace QuorvaneEngine::Test {

std::vector<Attachment>& attachmentLog() {
    static std::vector<Attachment> log;
    return log;
}

}

using QuorvaneEngine::Test::attachmentLog;

// The linker's option --wrap leads calls of the library's functions here. Both are members, whose first argument is the object, and return
// a reference to it, which is a pointer to the machine.
extern "C" {

Framebuffer* __real__ZN6Magnum2GL11Framebuffer13attachTextureENS1_16BufferAttachmentERNS0_7TextureILj2EEEi(
    Framebuffer*, BufferAttachment, Magnum::GL::Texture2D&, Magnum::Int);
Framebuffer* __wrap__ZN6Magnum2GL11Framebuffer13attachTextureENS1_16BufferAttachmentERNS0_7TextureILj2EEEi(
    Framebuffer*, BufferAttachment, Magnum::GL::Texture2D&, Magnum::Int);
Framebuffer* __real__ZN6Magnum2GL11Framebuffer6detachENS1_16BufferAttachmentE(Framebuffer*, BufferAttachment);
Framebuffer* __wrap__ZN6Magnum2GL11Framebuffer6detachENS1_16BufferAttachmentE(Framebuffer*, BufferAttachment);

Framebuffer* __wrap__ZN6Magnum2GL11Framebuffer13attachTextureENS1_16BufferAttachmentERNS0_7TextureILj2EEEi(
    Framebuffer* framebuffer, BufferAttachment attachment, Magnum::GL::Texture2D& texture, Magnum::Int level) {
    attachmentLog().push_back({framebuffer, texture.id()});
    return __real__ZN6Magnum2GL11Framebuffer13attachTextureENS1_16BufferAttachmentERNS0_7TextureILj2EEEi(
        framebuffer, attachment, texture, level);
}

Framebuffer* __wrap__ZN6Magnum2GL11Framebuffer6detachENS1_16BufferAttachmentE(
    Framebuffer* framebuffer, BufferAttachment attachment) {
    attachmentLog().push_back({framebuffer, 0});
    return __real__ZN6Magnum2GL11Framebuffer6detachENS1_16BufferAttachmentE(framebuffer, attachment);
}
}
