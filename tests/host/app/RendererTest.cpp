#include "app/Renderer.h"

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

#include <Corrade/Containers/ArrayView.h>
#include <Magnum/GL/Texture.h>
#include <Magnum/GL/TextureFormat.h>
#include <Magnum/ImageView.h>
#include <Magnum/PixelFormat.h>
#include <gtest/gtest.h>
#include <imgui.h>
#include <png.h>

#include "ThumbnailManager.h"
#include "app/DesktopWindow.h"

namespace QuorvaneEngine {
namespace {

constexpr int Width = 64;
constexpr int Height = 48;

/** A window on the display of the test, and a picture of what is drawn into it. */
class RendererTest: public testing::Test {
protected:
    RendererTest() {
        ImGui::CreateContext();
        ImGui::GetIO().IniFilename = nullptr;
        DesktopWindow::Options options;
        options.width = Width;
        options.height = Height;
        options.visible = false;
        opened = window.open("Test", options);
    }

    ~RendererTest() override {
        std::error_code error;
        std::filesystem::remove(file, error);
    }

    /** Draws one frame. The pixels are 0xrrggbb, rows from top to bottom. */
    template <class Gui> std::vector<unsigned> render(Renderer& renderer, Gui&& gui) {
        renderer.beginFrame();
        ImGui::NewFrame();
        gui(*ImGui::GetForegroundDrawList());
        ImGui::Render();
        renderer.render();
        EXPECT_TRUE(renderer.writeScreenshot(file.c_str()));

        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        EXPECT_TRUE(png_image_begin_read_from_file(&image, file.c_str()));
        EXPECT_EQ(image.width, unsigned(Width));
        EXPECT_EQ(image.height, unsigned(Height));
        image.format = PNG_FORMAT_RGB;
        std::vector<unsigned char> bytes(PNG_IMAGE_SIZE(image));
        EXPECT_TRUE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr));
        std::vector<unsigned> pixels;
        for(std::size_t i = 0; i + 2 < bytes.size(); i += 3)
            pixels.push_back(unsigned(bytes[i]) << 16 | unsigned(bytes[i + 1]) << 8 | bytes[i + 2]);
        return pixels;
    }

    static unsigned at(const std::vector<unsigned>& pixels, int x, int y) { return pixels[std::size_t(y * Width + x)]; }

    std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("quorvane-render-" + std::to_string(getpid()) + ".png");
    DesktopWindow window;
    bool opened = false;
};

TEST_F(RendererTest, DrawsTheGuiWithTheTopLeftCornerFirst) {
    ASSERT_TRUE(opened);
    {
        Renderer renderer{window};
        ASSERT_TRUE(renderer.isReady());
        const std::vector<unsigned> pixels = render(renderer, [](ImDrawList& list) {
            list.AddRectFilled({0.0f, 0.0f}, {8.0f, 4.0f}, IM_COL32(255, 128, 0, 255));
        });
        EXPECT_EQ(at(pixels, 2, 2), 0xff8000u);
        EXPECT_EQ(at(pixels, 2, Height - 2), 0x000000u);
        EXPECT_EQ(at(pixels, 20, 2), 0x000000u);
    }
    ImGui::DestroyContext();
}

TEST_F(RendererTest, ATextureIsNamedByTheAddressOfItsObject) {
    ASSERT_TRUE(opened);
    {
        Renderer renderer{window};
        ASSERT_TRUE(renderer.isReady());
        // The second of two, so that its OpenGL name is not the first one there is.
        Magnum::GL::Texture2D textures[2];
        const unsigned char pixel[]{10, 200, 30, 255};
        for(Magnum::GL::Texture2D& texture: textures)
            texture.setStorage(1, Magnum::GL::TextureFormat::RGBA8, {1, 1})
                .setSubImage(0, {}, Magnum::ImageView2D{Magnum::PixelFormat::RGBA8Unorm, {1, 1}, pixel});
        for(int frame = 0; frame != 3; ++frame) {
            const std::vector<unsigned> pixels = render(renderer, [&](ImDrawList& list) {
                list.AddImage(ImTextureRef{reinterpret_cast<ImTextureID>(&textures[1])}, {0.0f, 0.0f}, {32.0f, 32.0f});
                list.AddText({40.0f, 4.0f}, IM_COL32_WHITE, "A");
            });
            EXPECT_EQ(at(pixels, 16, 16), 0x0ac81eu);
            EXPECT_EQ(at(pixels, 36, 40), 0x000000u);
        }
    }
    ImGui::DestroyContext();
}

TEST_F(RendererTest, AThumbnailIsDrawnIntoItsWindowTheRightWayUp) {
    ASSERT_TRUE(opened);
    {
        Renderer renderer{window};
        ASSERT_TRUE(renderer.isReady());
        ThumbnailManager thumbnails;
        // The upper half orange, the lower half green; rows go from bottom to top.
        unsigned char pixels[128 * 128 * 4];
        for(std::size_t i = 0; i != std::size(pixels); i += 4) {
            const bool upper = i / (128 * 4) >= 64;
            pixels[i] = upper ? 255 : 10;
            pixels[i + 1] = upper ? 128 : 200;
            pixels[i + 2] = upper ? 0 : 30;
            pixels[i + 3] = 255;
        }
        for(const char* const name: {"1", "ma1", "m1"})
            thumbnails.setThumbnail(name, Magnum::ImageView2D{Magnum::PixelFormat::RGBA8Unorm, {128, 128}, pixels});
        // In the middle of the drawing of a frame the atlas gets more slices.
        for(int i = 0; i != 1024; ++i) thumbnails.thumbnailPos(std::to_string(i).c_str());
        ImGui::GetStyle().FrameRounding = 6.0f;
        for(int frame = 0; frame != 3; ++frame) {
            const std::vector<unsigned> shown = render(renderer, [&](ImDrawList&) {
                ImGui::SetNextWindowPos({0.0f, 0.0f});
                ImGui::SetNextWindowSize({float(Width), float(Height)});
                ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, {0.0f, 0.0f});
                ImGui::PushStyleColor(ImGuiCol_WindowBg, IM_COL32(0, 0, 255, 255));
                ImGui::Begin("Window", nullptr, ImGuiWindowFlags_NoDecoration);
                ImGui::SetCursorPos({8.0f, 4.0f});
                EXPECT_TRUE(thumbnails.thumbnail("m1", {40.0f, 40.0f}));
                if(frame == 1)
                    thumbnails.setThumbnail(
                        "1023", Magnum::ImageView2D{Magnum::PixelFormat::RGBA8Unorm, {128, 128}, pixels});
                ImGui::End();
                ImGui::PopStyleColor();
                ImGui::PopStyleVar();
            });
            EXPECT_EQ(at(shown, 28, 10), 0xff8000u) << frame;
            EXPECT_EQ(at(shown, 28, 22), 0xff8000u) << frame;
            EXPECT_EQ(at(shown, 28, 25), 0x0ac81eu) << frame;
            EXPECT_EQ(at(shown, 28, 40), 0x0ac81eu) << frame;
            EXPECT_EQ(at(shown, 9, 23), 0xff8000u) << frame;
            EXPECT_EQ(at(shown, 46, 24), 0x0ac81eu) << frame;
            // Around it, and in its rounded corners.
            EXPECT_EQ(at(shown, 6, 23), 0x0000ffu) << frame;
            EXPECT_EQ(at(shown, 49, 23), 0x0000ffu) << frame;
            EXPECT_EQ(at(shown, 8, 4), 0x0000ffu) << frame;
            EXPECT_EQ(at(shown, 47, 43), 0x0000ffu) << frame;
        }
        EXPECT_TRUE(thumbnails.hasThumbnail("1023"));
        EXPECT_EQ(thumbnails.thumbnailPos("1023").z(), 1);
    }
    ImGui::DestroyContext();
}

}
}
