/* What thumbnails cost: 2,048 names, which fill two slices of the atlas, handed pictures, looked up and drawn.

   Attachments are counted where the library's functions are called, allocations in the whole process. The time to draw a thumbnail by
   its name is a ratio to the time to draw the library's own image item, which needs no look-up: both are taken in turns in one
   process, and the median of the pairs' ratios is printed. Runs on a virtual display with software OpenGL where there is no other. */

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

#include <Magnum/ImageView.h>
#include <Magnum/PixelFormat.h>
#include <imgui.h>

#include "BareGui.h"
#include "Figures.h"
#include "ThumbnailManager.h"
#include "editor/AttachmentLog.h"
#include "editor/GlWindow.h"
#include "support/Allocations.h"

namespace {

using namespace QuorvaneEngine;

constexpr int Names = 2048;
constexpr int Slices = 2;
constexpr int WarmUp = 20;
constexpr int Pairs = 101;
constexpr float Size = 12.0f;
constexpr int Columns = 64;

/* What a look-up and a rounded corner may add to an image item */
constexpr double MaxRatio = 3.0;

std::vector<std::string> makeNames() {
    std::vector<std::string> names;
    names.reserve(Names);
    /* Longer than what a string keeps without memory of its own */
    for(int i = 0; i != Names; ++i)
        names.push_back("the thumbnail of the resource with the number " + std::to_string(i));
    return names;
}

Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

bool measureAttachments(ThumbnailManager& manager, const std::vector<std::string>& names) {
    const std::vector<unsigned char> pixels(128 * 64 * 4, 255);
    const Magnum::ImageView2D picture{
        Magnum::PixelFormat::RGBA8Unorm, {128, 64}, Containers::ArrayView<const void>{pixels.data(), pixels.size()}};
    const Magnum::GL::Framebuffer* const atlas = Test::attachmentLog().front().framebuffer;
    const auto attached = [&](const int first, const int last) {
        Test::attachmentLog().clear();
        for(int i = first; i != last; ++i) manager.setThumbnail(viewed(names[std::size_t(i)]), picture);
        return double(std::count_if(Test::attachmentLog().begin(), Test::attachmentLog().end(),
            [&](const Test::Attachment& each) { return each.framebuffer == atlas && each.texture; }));
    };
    bool met = print("attachments, 1,024 names of the first slice", attached(0, Names / 2), 0.0);
    met &= print("attachments, 1,024 names of the second slice", attached(Names / 2, Names), 1.0);
    met &= print("attachments, back to the first slice", attached(0, Names / 2), 1.0);
    return met;
}

bool measureLookUps(ThumbnailManager& manager, const std::vector<std::string>& names) {
    const Test::Allocations allocations;
    bool known = true;
    for(const std::string& name: names)
        known &= manager.hasThumbnail(viewed(name)) && manager.thumbnailPos(viewed(name)).z() < Slices;
    const double count = double(allocations.count());
    if(!known) std::fprintf(stderr, "not every name has a cell\n");
    return print("allocations, 2 x 2,048 look-ups", count, 0.0) && known;
}

/* The draw commands of the last frame whose texture is not the font's */
int commands() {
    int count = 0;
    for(const ImDrawList* const list: ImGui::GetDrawData()->CmdLists)
        for(const ImDrawCmd& command: list->CmdBuffer) count += !command.TexRef._TexData && command.ElemCount;
    return count;
}

bool measureDrawing(ThumbnailManager& manager, const std::vector<std::string>& names) {
    BareGui gui;
    ImGui::GetStyle().ItemSpacing = {2.0f, 2.0f};
    bool drawn = true;
    const auto thumbnail = [&](const int i) {
        drawn &= manager.thumbnail(viewed(names[std::size_t(i)]), {Size, Size});
    };
    const auto slice = reinterpret_cast<ImTextureID>(&manager.atlasSlice(0));
    const auto image = [&](int) { ImGui::Image(slice, {Size, Size}); };
    const auto frame = [&](const auto& item) {
        return gui.frame([&] {
            for(int i = 0; i != Names; ++i) {
                if(i % Columns) ImGui::SameLine();
                item(i);
            }
        });
    };
    for(int i = 0; i != WarmUp; ++i) {
        frame(image);
        frame(thumbnail);
    }
    /* What is clipped would cost little, too */
    drawn &= ImGui::GetDrawData()->TotalVtxCount >= 4 * Names;
    if(!drawn) std::fprintf(stderr, "not every thumbnail was drawn\n");
    bool met = print("draw commands, 2,048 thumbnails", commands(), Slices) && drawn;

    const Test::Allocations allocations;
    frame(thumbnail);
    met &= print("allocations, a frame of 2,048 thumbnails", double(allocations.count()), 0.0);

    return print("time, thumbnails to image items",
               medianRatio(
                   Pairs, [&] { return frame(thumbnail); }, [&] { return frame(image); }),
               MaxRatio) &&
        met;
}

}

int main(int, char** const argv) {
    if(!std::getenv("DISPLAY")) {
        execl(QUORVANE_SOURCE_DIR "/scripts/with-display.sh", "with-display.sh", argv[0], static_cast<char*>(nullptr));
        std::perror("with-display.sh");
        return 1;
    }
    const Test::GlWindow window;
    if(!window.isReady()) {
        std::fprintf(stderr, "no OpenGL 3.3 here: %s\n", Test::GlWindow::reason());
        return 1;
    }
    ThumbnailManager manager;
    const std::vector<std::string> names = makeNames();
    bool met = measureAttachments(manager, names);
    met &= measureLookUps(manager, names);
    met &= measureDrawing(manager, names);
    return met ? 0 : 1;
}
