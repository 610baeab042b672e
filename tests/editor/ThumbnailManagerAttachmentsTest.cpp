#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <Magnum/GL/Framebuffer.h>
#include <gtest/gtest.h>

#include "AttachmentLog.h"
#include "ThumbnailPictures.h"
#include "support/Allocations.h"

namespace QuorvaneEngine::Test {
namespace {

TEST_F(ThumbnailManagerTest, TheSliceIsAttachedOnceWhileCellsAreInIt) {
    ThumbnailManager manager;
    ASSERT_EQ(attachmentLog().size(), 1u);
    GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    EXPECT_EQ(attachmentLog()[0].texture, manager.atlasSlice(0).id());

    GL::Texture2D texture = textureOf(plain({4, 4}, Red));
    for(int i = 0; i != 100; ++i) {
        manager.setThumbnail(nameOf(i).c_str(), plain({128, 128}, Red));
        manager.setThumbnail(nameOf(i).c_str(), plain({2, 2}, Red));
        manager.setThumbnail(nameOf(i).c_str(), texture);
    }
    for(std::size_t i = 1; i != attachmentLog().size(); ++i) EXPECT_NE(attachmentLog()[i].framebuffer, atlas);
}

TEST_F(ThumbnailManagerTest, AChangeOfSliceIsOneChangeOfAttachment) {
    ThumbnailManager manager;
    GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    name(manager, 1025);
    GL::Texture2D source = textureOf(plain({4, 4}, Red));
    GL::Framebuffer framebuffer{{{}, {4, 4}}};
    framebuffer.attachTexture(Color, source, 0);

    const auto changes = [&](int i) {
        attachmentLog().clear();
        manager.setThumbnail(nameOf(i).c_str(), framebuffer);
        std::vector<unsigned> textures;
        for(const Attachment& attachment: attachmentLog()) {
            EXPECT_EQ(attachment.framebuffer, atlas);
            textures.push_back(attachment.texture);
        }
        return textures;
    };
    EXPECT_EQ(changes(0), (std::vector<unsigned>{}));
    const std::vector<unsigned> toSecond = changes(1024);
    EXPECT_EQ(toSecond, (std::vector<unsigned>{0, manager.atlasSlice(1).id()}));
    EXPECT_EQ(changes(1024), (std::vector<unsigned>{}));
    EXPECT_EQ(changes(1023), (std::vector<unsigned>{0, manager.atlasSlice(0).id()}));
    EXPECT_EQ(changes(1), (std::vector<unsigned>{}));
    manager.reset();
    EXPECT_EQ(changes(2), (std::vector<unsigned>{}));
}

TEST_F(ThumbnailManagerTest, BothFramebuffersBeginWithAViewportOfACell) {
    std::optional<ThumbnailManager> manager{std::in_place};
    GL::Texture2D texture = textureOf(plain({4, 2}, Red));
    manager->setThumbnail("a", texture);
    ASSERT_GE(attachmentLog().size(), 2u);
    const GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    const GL::Framebuffer* const source = attachmentLog()[1].framebuffer;
    ASSERT_NE(source, atlas);
    EXPECT_EQ(source->viewport(), (Range2Di{{}, {4, 2}}));

    // The next one has its framebuffers at the same places.
    attachmentLog().clear();
    manager.emplace();
    ASSERT_EQ(attachmentLog().at(0).framebuffer, atlas);
    for(const GL::Framebuffer* const framebuffer: {atlas, source})
        EXPECT_EQ(framebuffer->viewport(), (Range2Di{{}, {128, 128}}));
}

TEST_F(ThumbnailManagerTest, ASourceTextureIsAttachedWhileItIsCopied) {
    ThumbnailManager manager;
    const GL::Framebuffer* const atlas = attachmentLog()[0].framebuffer;
    GL::Texture2D texture = textureOf(plain({4, 4}, Red));
    attachmentLog().clear();
    manager.setThumbnail("a", texture);
    ASSERT_EQ(attachmentLog().size(), 2u);
    EXPECT_EQ(attachmentLog()[0].texture, texture.id());
    EXPECT_EQ(attachmentLog()[1].texture, 0u);
    EXPECT_EQ(attachmentLog()[0].framebuffer, attachmentLog()[1].framebuffer);
    EXPECT_NE(attachmentLog()[0].framebuffer, atlas);
}

TEST_F(ThumbnailManagerTest, LeavesNothingBehindInOpenGL) {
    const auto isTexture = function<unsigned char (*)(unsigned)>("glIsTexture");
    const auto isFramebuffer = function<unsigned char (*)(unsigned)>("glIsFramebuffer");
    const auto isRenderbuffer = function<unsigned char (*)(unsigned)>("glIsRenderbuffer");
    const auto objects = [&] {
        int count = 0;
        for(unsigned id = 1; id != 1000; ++id) count += isTexture(id) + isFramebuffer(id) + isRenderbuffer(id);
        return count;
    };
    const int before = objects();
    {
        ThumbnailManager manager;
        for(int i = 0; i != 20; ++i) manager.setThumbnail(nameOf(i).c_str(), plain({8, 4}, Red));
        manager.atlasSlice(1);
        // Two slices, and what is read from and drawn to; no renderbuffer.
        EXPECT_EQ(objects(), before + 4);
    }
    EXPECT_EQ(objects(), before);
    EXPECT_EQ(function<unsigned (*)()>("glGetError")(), 0u);
}

// Look-ups

TEST_F(ThumbnailManagerTest, LookUpsByViewAllocateNothing) {
    ThumbnailManager manager;
    name(manager, 1024);
    // Longer than what a string keeps without memory of its own, and not NUL-terminated.
    const std::string text = "a name that is longer than any small string, and then some";
    const Containers::StringView view{text.data(), text.size() - 5};
    manager.thumbnailPos(view);
    const Allocations allocations;
    const Vector3i position = manager.thumbnailPos(view);
    const bool has = manager.hasThumbnail(view);
    const bool hasNot = manager.hasThumbnail({text.data(), text.size()});
    const std::uint64_t count = allocations.count();
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(position, (Vector3i{0, 0, 1}));
    EXPECT_TRUE(has);
    EXPECT_FALSE(hasNot);
}

TEST_F(ThumbnailManagerTest, NamesOfOneSliceNeedNoLargerTable) {
    ThumbnailManager manager;
    // A name that fits into its string: one piece of memory for each, and none for the table.
    manager.thumbnailPos("first");
    const Allocations allocations;
    for(int i = 1; i != 1024; ++i) {
        char name[8];
        std::snprintf(name, sizeof(name), "%d", i);
        manager.thumbnailPos(name);
    }
    EXPECT_EQ(allocations.count(), 1023u);
}

}
}
