#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <utility>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Utility/Debug.h>
#include <Magnum/GL/Context.h>
#include <Magnum/GL/DefaultFramebuffer.h>
#include <Magnum/GL/Framebuffer.h>
#include <Magnum/GL/Renderbuffer.h>
#include <Magnum/GL/Renderer.h>
#include <Magnum/GL/Texture.h>
#include <Magnum/GL/TextureFormat.h>
#include <Magnum/Image.h>
#include <Magnum/ImageView.h>
#include <Magnum/Math/Color.h>
#include <Magnum/Math/Range.h>
#include <Magnum/PixelFormat.h>
#include <Magnum/Platform/GLContext.h>
#include <Magnum/Sampler.h>
#include <gtest/gtest.h>

#include "Print.h"

using namespace Magnum;

namespace {

// A window of 64 x 32 pixels whose OpenGL context is current.
class Window {
public:
    Window() {
        glfwInit();
        glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 3);
        glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 3);
        glfwWindowHint(GLFW_OPENGL_PROFILE, GLFW_OPENGL_CORE_PROFILE);
        _window = glfwCreateWindow(64, 32, "test", nullptr, nullptr);
        glfwMakeContextCurrent(_window);
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    // GLFW goes on: once it has unloaded the driver, the leak sanitizer takes the driver's memory for lost.
    ~Window() { glfwDestroyWindow(_window); }
    explicit operator bool() const { return _window; }

private:
    GLFWwindow* _window;
};

class GLTest: public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window);
        const Debug silent{nullptr};
        ASSERT_TRUE(context.tryCreate());
    }

    Window window;
    Platform::GLContext context{NoCreate};
};

// The pixel in column x and row y, from the lower left corner, as eight digits.
std::string pixel(const Image2D& image, Int x, Int y) {
    std::string out;
    for(int i = 0; i != 4; ++i) {
        const unsigned char byte = (unsigned char)(image.data()[(y * image.size().x() + x) * 4 + i]);
        out += "0123456789abcdef"[byte / 16];
        out += "0123456789abcdef"[byte % 16];
    }
    return out;
}

// A picture whose left half has one color and its right half another.
Image2D halves(const Vector2i& size) {
    Containers::Array<char> data{ValueInit, std::size_t(size.product() * 4)};
    for(Int i = 0; i != size.product(); ++i) {
        data[i * 4 + (i % size.x() < size.x() / 2 ? 0 : 1)] = '\xff';
        data[i * 4 + 3] = '\xff';
    }
    return Image2D{PixelFormat::RGBA8Unorm, size, std::move(data)};
}

GL::Texture2D textureOf(const ImageView2D& image) {
    GL::Texture2D texture;
    texture.setStorage(1, GL::TextureFormat::RGBA8, image.size()).setSubImage(0, {}, image);
    return texture;
}

} // namespace

TEST(Image, ChecksTheSizeOfItsData) {
    char data[32]{};
    EXPECT_EQ((ImageView2D{PixelFormat::RGBA8Unorm, {4, 2}, data}.size()), (Vector2i{4, 2}));
    MutableImageView2D mutableView{PixelFormat::RGBA8Unorm, {4, 2}, data};
    mutableView.data()[0] = 'x';
    EXPECT_EQ(ImageView2D{mutableView}.data()[0], 'x');
    EXPECT_EQ(pixelFormatSize(PixelFormat::RGBA8Unorm), 4);
    EXPECT_DEATH((ImageView2D{PixelFormat::RGBA8Unorm, {4, 3}, data}),
        "ImageView: data too small, got 32 but expected at least 48 bytes\n");
    EXPECT_DEATH((Image2D{PixelFormat::RGBA8Unorm, {4, 3}, Containers::Array<char>{ValueInit, 4}}),
        "Image: data too small, got 4 but expected at least 48 bytes\n");
}

TEST(Image, ReleasesItsData) {
    Image2D image = halves({4, 2});
    EXPECT_EQ(image.format(), PixelFormat::RGBA8Unorm);
    EXPECT_EQ(image.release().size(), 32);
    EXPECT_EQ(image.size(), Vector2i{});
}

TEST(GLContext, WithoutAContextNothingCanBeMade) {
    EXPECT_FALSE(GL::Context::hasCurrent());
    EXPECT_DEATH(GL::Context::current(), "GL::Context::current\\(\\): no current context\n");
    EXPECT_DEATH(GL::Texture2D{}, "GL::Context::current\\(\\): no current context\n");
    EXPECT_DEATH((GL::Framebuffer{{{}, {4, 4}}}), "GL::Context::current\\(\\): no current context\n");
    EXPECT_EQ(GL::Texture2D{NoCreate}.id(), 0);
    EXPECT_EQ(GL::Framebuffer{NoCreate}.id(), 0);
    EXPECT_EQ(GL::Renderbuffer{NoCreate}.id(), 0);
}

TEST(GLContext, IsRefusedWhereNoneIsCurrent) {
    Platform::GLContext context{NoCreate};
    Containers::String out;
    {
        const Error redirect{&out};
        EXPECT_FALSE(context.tryCreate());
    }
    EXPECT_EQ(out, "GL::Context: unsupported OpenGL version {0, 0}\n");
    EXPECT_FALSE(GL::Context::hasCurrent());
}

TEST(GLContext, TakesOverTheWindowsContext) {
    const Window window;
    ASSERT_TRUE(window);
    Containers::String out;
    {
        Platform::GLContext context{NoCreate};
        EXPECT_FALSE(GL::Context::hasCurrent());
        {
            const Debug redirect{&out};
            EXPECT_TRUE(context.tryCreate());
        }
        EXPECT_TRUE(GL::Context::hasCurrent());
        EXPECT_EQ(&GL::Context::current(), &context);
        EXPECT_EQ(GL::defaultFramebuffer.viewport(), (Range2Di{{}, {64, 32}}));
        context.resetState(GL::Context::State::EnterExternal);
        context.resetState(GL::Context::State::ExitExternal);
        context.resetState();
    }
    EXPECT_FALSE(GL::Context::hasCurrent());
    EXPECT_TRUE(out.hasPrefix("Renderer: ")) << out.data();
    EXPECT_TRUE(out.contains("\nOpenGL version: ")) << out.data();
}

TEST_F(GLTest, ClearsAndReadsTheWindow) {
    GL::Renderer::setClearColor({1.0f, 0.0f, 0.2f, 1.0f});
    GL::defaultFramebuffer.setViewport({{}, {64, 32}});
    GL::defaultFramebuffer.clear(GL::FramebufferClear::Color).bind();
    const Image2D image = GL::defaultFramebuffer.read({{}, {64, 32}}, {PixelFormat::RGBA8Unorm});
    EXPECT_EQ(image.size(), (Vector2i{64, 32}));
    EXPECT_EQ(pixel(image, 0, 0).substr(0, 6), "ff0033");
    EXPECT_EQ(pixel(image, 63, 31).substr(0, 6), "ff0033");

    Containers::Array<unsigned char> pixels{ValueInit, 16};
    GL::defaultFramebuffer.clearColor(Color4{0.0f, 1.0f, 0.0f});
    GL::defaultFramebuffer.read({{}, {2, 2}}, MutableImageView2D{PixelFormat::RGBA8Unorm, {2, 2}, pixels});
    EXPECT_EQ(pixels[1], 255);
    EXPECT_EQ(pixels[0], 0);
    EXPECT_DEATH(GL::defaultFramebuffer.read({{}, {2, 1}}, MutableImageView2D{PixelFormat::RGBA8Unorm, {2, 2}, pixels}),
        "GL::AbstractFramebuffer::read\\(\\): expected image view size Vector\\(2, 1\\) but got Vector\\(2, 2\\)\n");
}

TEST_F(GLTest, ATextureGivesBackItsPixels) {
    GL::Texture2D texture = textureOf(halves({8, 4}));
    EXPECT_NE(texture.id(), 0);
    EXPECT_EQ(texture.imageSize(0), (Vector2i{8, 4}));
    const Image2D image = texture.image(0, {PixelFormat::RGBA8Unorm});
    EXPECT_EQ(pixel(image, 3, 3), "ff0000ff");
    EXPECT_EQ(pixel(image, 4, 0), "00ff00ff");

    texture.setSubImage(0, {6, 2}, halves({2, 1}));
    const Image2D changed = texture.image(0, {PixelFormat::RGBA8Unorm});
    EXPECT_EQ(pixel(changed, 6, 2), "ff0000ff");
    EXPECT_EQ(pixel(changed, 6, 3), "00ff00ff");
}

TEST_F(GLTest, ATextureOfTheLargestSizeCanBeMade) {
    const Vector2i size = GL::Texture2D::maxSize();
    EXPECT_EQ(size.x(), size.y());
    EXPECT_GE(size.x(), 1024);
    GL::Texture2D wide, high;
    wide.setStorage(1, GL::TextureFormat::RGBA8, {size.x(), 1});
    high.setStorage(1, GL::TextureFormat::RGBA8, {1, size.y()});
    EXPECT_EQ(wide.imageSize(0), (Vector2i{size.x(), 1}));
    EXPECT_EQ(high.imageSize(0), (Vector2i{1, size.y()}));
}

TEST_F(GLTest, TexturesMoveWithTheirNames) {
    GL::Texture2D a;
    const UnsignedInt id = a.id();
    GL::Texture2D b = std::move(a);
    EXPECT_EQ(a.id(), 0);
    EXPECT_EQ(b.id(), id);
    GL::Texture2D c{NoCreate};
    c = std::move(b);
    EXPECT_EQ(c.id(), id);
    EXPECT_EQ(b.id(), 0);
}

TEST_F(GLTest, TexturesTakeFiltersOfBothKinds) {
    GL::Texture2D texture;
    texture.setMinificationFilter(SamplerFilter::Linear)
        .setMinificationFilter(SamplerFilter::Linear, SamplerMipmap::Linear)
        .setMinificationFilter(GL::SamplerFilter::Nearest, GL::SamplerMipmap::Base)
        .setMagnificationFilter(SamplerFilter::Linear)
        .setMagnificationFilter(GL::SamplerFilter::Nearest)
        .setWrapping(SamplerWrapping::ClampToEdge)
        .setStorage(2, GL::TextureFormat::RGBA8, {8, 4})
        .setSubImage(0, {}, halves({8, 4}))
        .generateMipmap();
    EXPECT_EQ(texture.imageSize(1), (Vector2i{4, 2}));
    EXPECT_EQ(pixel(texture.image(1, {PixelFormat::RGBA8Unorm}), 3, 1), "00ff00ff");
}

TEST_F(GLTest, BlitsATexturesPixelsIntoAPartOfAnother) {
    GL::Texture2D source = textureOf(halves({8, 4}));
    GL::Texture2D target;
    target.setStorage(1, GL::TextureFormat::RGBA8, {16, 16});
    GL::Framebuffer from{{{}, {8, 4}}}, to{{{}, {16, 16}}};
    from.attachTexture(GL::Framebuffer::ColorAttachment{0}, source, 0);
    to.attachTexture(GL::Framebuffer::ColorAttachment{0}, target, 0);
    to.clearColor(0, Color4{0.0f, 0.0f, 1.0f});
    GL::AbstractFramebuffer::blit(
        from, to, from.viewport(), {{4, 4}, {8, 6}}, GL::FramebufferBlit::Color, GL::FramebufferBlitFilter::Linear);
    from.detach(GL::Framebuffer::ColorAttachment{0});
    const Image2D image = to.read({{}, {16, 16}}, {PixelFormat::RGBA8Unorm});
    EXPECT_EQ(pixel(image, 3, 4), "0000ffff");
    EXPECT_EQ(pixel(image, 4, 4), "ff0000ff");
    EXPECT_EQ(pixel(image, 5, 5), "ff0000ff");
    EXPECT_EQ(pixel(image, 6, 5), "00ff00ff");
    EXPECT_EQ(pixel(image, 8, 4), "0000ffff");
    EXPECT_EQ(pixel(target.image(0, {PixelFormat::RGBA8Unorm}), 4, 4), "ff0000ff");
}

TEST_F(GLTest, AFramebufferDrawsIntoItsTextureAndNotIntoTheWindow) {
    GL::defaultFramebuffer.clearColor(Color4{1.0f, 1.0f, 1.0f});
    GL::Texture2D texture;
    texture.setStorage(1, GL::TextureFormat::RGBA8, {4, 4});
    GL::Framebuffer framebuffer{{{}, {4, 4}}};
    framebuffer.attachTexture(GL::Framebuffer::ColorAttachment{0}, texture, 0).setViewport({{1, 1}, {3, 3}});
    EXPECT_EQ(framebuffer.viewport(), (Range2Di{{1, 1}, {3, 3}}));
    GL::Renderer::setClearColor({0.0f, 0.0f, 1.0f, 1.0f});
    framebuffer.clear(GL::FramebufferClear::Color);
    EXPECT_EQ(pixel(framebuffer.read({{}, {4, 4}}, {PixelFormat::RGBA8Unorm}), 0, 0), "0000ffff");
    EXPECT_EQ(pixel(GL::defaultFramebuffer.read({{}, {4, 4}}, {PixelFormat::RGBA8Unorm}), 0, 0).substr(0, 6), "ffffff");

    GL::Framebuffer moved = std::move(framebuffer);
    EXPECT_EQ(framebuffer.id(), 0);
    EXPECT_EQ(moved.viewport(), (Range2Di{{1, 1}, {3, 3}}));
    const GL::Renderbuffer renderbuffer;
    EXPECT_NE(renderbuffer.id(), UnsignedInt(-1));
}

TEST_F(GLTest, FeaturesAreSwitched) {
    GL::Renderer::enable(GL::Renderer::Feature::ScissorTest);
    GL::Renderer::disable(GL::Renderer::Feature::ScissorTest);
    GL::Renderer::setFeature(GL::Renderer::Feature::Blending, true);
    EXPECT_TRUE(GL::Context::hasCurrent());
}
