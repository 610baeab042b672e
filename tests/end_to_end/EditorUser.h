#pragma once

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "EditorWindow.h"
#include "Program.h"
#include "app/Theme.h"

namespace QuorvaneEngine::Test {

/** Somebody with a home, a project and a display, who uses the editor's window by what he sees in it. */
class EditorUser: public testing::Test {
protected:
    EditorUser() {
        for(const char* const name: {"home", "data", "cache", "desk"}) std::filesystem::create_directories(root / name);
        copySample(project);
    }

    ~EditorUser() override {
        std::error_code error;
        std::filesystem::remove_all(root, error);
    }

    void SetUp() override {
        if(runProgram({"/bin/sh", "-c", "command -v xdotool"}, root.string()).exitCode)
            GTEST_SKIP() << "there is no xdotool, which would use the mouse and the keys";
    }

    static void copySample(const std::filesystem::path& to) {
        std::filesystem::copy(QUORVANE_SOURCE_DIR "/samples/lighthouse", to, std::filesystem::copy_options::recursive);
        std::filesystem::remove_all(to / ".editor");
    }

    /** What is set for the editor. Drivers and fonts may keep what they like. */
    std::vector<std::string> environment() const {
        return {"HOME=" + (root / "home").string(), "XDG_CACHE_HOME=" + (root / "cache").string(),
            "XDG_DATA_HOME=" + (root / "data").string(), "XDG_CONFIG_HOME", "XDG_STATE_HOME"};
    }

    /** The arguments with what makes every window alike. */
    static std::vector<std::string> alike(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--scale", "1", "--theme", "dark", "--size", "1200x800"});
        return arguments;
    }

    std::string desk() const { return (root / "desk").string(); }

    /** What the editor has printed. */
    std::string printed() const { return read(root / "desk/printed"); }

    static std::string read(const std::filesystem::path& path) {
        std::ifstream file{path, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    /** A colour of the editor as it is on the screen. */
    static unsigned shown(const Theme::Color color) {
        const ImVec4& value = Theme::color(color, Theme::Scheme::Dark);
        unsigned shown = 0;
        for(const float part: {value.x, value.y, value.z}) shown = shown << 8 | unsigned(std::lround(part * 255.0f));
        return shown;
    }

    /** The button that stands out, which the mouse and the keyboard may have reached; empty where there is none. */
    static Area primaryButton(const Picture& picture) {
        for(const Theme::Color color: {Theme::Color::Primary, Theme::Color::PrimaryHovered})
            for(const Area& group: picture.groups(shown(color), picture.all(), 24))
                if(group.height() > 14 && group.height() < 60 && group.width() < 300) return group;
        return {};
    }

    /** The buttons of a question, from left to right; the first one stands out. */
    static std::vector<Area> buttons(const Picture& picture) {
        const Area first = primaryButton(picture);
        std::map<unsigned, Area> buttons;
        if(first.isEmpty()) return {};
        // Above what is written on them. The keyboard may have reached any.
        for(const Theme::Color color:
            {Theme::Color::Primary, Theme::Color::PrimaryHovered, Theme::Color::Button, Theme::Color::Hovered})
            for(const Area& run: picture.runs(shown(color), first.top + 3, 24))
                buttons[run.left] = {run.left, first.top, run.right, first.bottom};
        std::vector<Area> sorted;
        for(const auto& [left, button]: buttons) sorted.push_back(button);
        return sorted;
    }

    /** The marks in boxes of terms, from top to bottom. */
    static std::vector<Area> ticks(const Picture& picture) {
        const Area column{picture.width - picture.width / 6, 0, picture.width, picture.height};
        std::vector<Area> ticks;
        for(const Area& group: picture.groups(shown(Theme::Color::Check), column, 1))
            if(group.height() > 5 && group.width() > 5) ticks.push_back(group);
        return ticks;
    }

    /** The field to search in, which is the widest of all. */
    static Area searchField(const Picture& picture) {
        for(const Area& group: picture.groups(shown(Theme::Color::Field), picture.all(), picture.width / 2))
            if(group.height() > 14) return group;
        return {};
    }

    std::filesystem::path root = std::filesystem::temp_directory_path() / ("quorvane-user-" + std::to_string(getpid()));
    std::filesystem::path project = root / "a lighthouse";
};

}
