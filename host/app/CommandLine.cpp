#include "app/CommandLine.h"

#include <cstdio>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace QuorvaneEngine {

namespace {

constexpr Int LargestSide = 16384;

/** The two numbers of "1600x1000", or an explanation of what is wrong. */
std::string readSize(const std::string& text, Int& width, Int& height) {
    char rest = 0;
    const bool read = std::sscanf(text.c_str(), "%5dx%5d%c", &width, &height, &rest) == 2;
    if(read && width > 0 && width <= LargestSide && height > 0 && height <= LargestSide) return {};
    return "\"" + text + "\" is not a size in pixels such as 1600x1000";
}

}

Containers::Optional<CommandLine> parseCommandLine(int argc, const char* const* argv, int& exitCode) {
    CommandLine line;
    std::string project;
    std::string screenshot;
    std::string view;
    std::string modules;
    std::vector<std::string> moreModules;
    std::vector<std::string> newView;
    std::string size;
    std::string theme;

    CLI::App app{"Edits game projects.", "quorvane-editor"};
    auto* const folder = app.add_option("folder,--project", project, "Folder of the project to open");
    folder->type_name("DIR");
    auto* const picture =
        app.add_option("--screenshot", screenshot, "Write a picture of the editor to this PNG file and end");
    picture->type_name("FILE");
    app.add_option("--size", size, "Size of the window in pixels, 1600x1000 without it")
        ->type_name("WxH")
        ->check([&line](const std::string& text) { return readSize(text, line.width, line.height); });
    app.add_option("--frames", line.frames, "Frames to draw before the picture is taken")
        ->needs(picture)
        ->check(CLI::Range(1, 100000))
        ->type_name("N");
    app.add_option("--view", view, "Title of the view that the picture shows in front")
        ->needs(picture)
        ->type_name("TITLE");
    app.add_option("--modules", modules, "Folder of modules in place of the editor's own")->type_name("DIR");
    app.add_option(
           "--more-modules", moreModules, "Folder of modules beside the editor's own; may be given several times")
        ->type_name("DIR")
        ->allow_extra_args(false);
    app.add_option("--new-view", newView, "Write the project of a small view plug-in into a new folder and end")
        ->type_name("NAME FOLDER")
        ->expected(2)
        ->excludes(folder)
        ->excludes(picture);
    app.add_option("--theme", theme, "Colours of this run in place of those chosen before")
        ->check(CLI::IsMember({"dark", "light"}))
        ->type_name("dark|light");
    app.add_option("--scale", line.scale, "Size of everything, 1 for 96 dots per inch; the desktop's without it")
        ->check(CLI::Range(0.5, 8.0))
        ->type_name("S");

    try {
        app.parse(argc, argv);
    } catch(const CLI::ParseError& error) {
        exitCode = app.exit(error);
        return {};
    }
    line.project = project.c_str();
    line.hasSize = !size.empty();
    line.screenshot = screenshot.c_str();
    line.view = view.c_str();
    line.modules = modules.c_str();
    line.theme = theme.c_str();
    for(const std::string& one: moreModules) line.moreModules.emplace_back(one.c_str());
    if(!newView.empty()) {
        line.newView = newView[0].c_str();
        line.newViewFolder = newView[1].c_str();
    }
    return line;
}

}
