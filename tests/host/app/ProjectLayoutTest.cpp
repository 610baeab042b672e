#include "app/ProjectLayout.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <sys/stat.h>

#include "EditorFrameTest.h"
#include "support/OrdinaryUser.h"

namespace QuorvaneEngine::Test {
namespace {

constexpr const char* Problem = ", so all windows are where they are at first";

class ProjectLayoutTest: public EditorFrameTest {
protected:
    std::filesystem::path file(const char* project) const { return root / project / ".editor/imgui.ini"; }

    std::string layout(const char* project) const {
        std::ifstream stream{file(project)};
        return {std::istreambuf_iterator<char>{stream}, {}};
    }

    void writeLayout(const char* project, const std::string& text) const {
        std::filesystem::create_directories(file(project).parent_path());
        std::ofstream{file(project)} << text;
    }

    /** What is printed where the layout of the first project cannot be loaded. */
    std::string warning(const std::string& problem) const {
        return "ProjectLayout::load(): " + file("first").string() + problem + Problem;
    }

    static const ImGuiWindow& window(const char* title) { return *ImGui::FindWindowByName(title); }

    /** Whether a view has the whole dock space, as it has at first. */
    static bool fillsTheSpace(const char* title) {
        const ImGuiWindow& view = window(title);
        const ImGuiViewport& viewport = *ImGui::GetMainViewport();
        return view.DockIsActive && view.Pos.x == viewport.WorkPos.x && view.Size.x == viewport.WorkSize.x &&
            view.Size.y > viewport.WorkSize.y * 0.9f;
    }

    /** Drags the tab of the messages to the left of the views. */
    void dockMessagesLeft() {
        isOpen("Messages") = true;
        EXPECT_TRUE(play("dock", [](ImGuiTestContext& user) {
            user.Yield(2);
            user.DockInto("//Messages", "//Counter", ImGuiDir_Left);
            user.Yield(2);
        }));
        EXPECT_TRUE(messagesAreLeft());
    }

    static bool messagesAreLeft() {
        const ImGuiWindow& messages = window("Messages");
        const ImGuiWindow& counter = window("Counter");
        return messages.DockIsActive && counter.DockIsActive && messages.Pos.y == counter.Pos.y &&
            messages.Pos.x + messages.Size.x <= counter.Pos.x && messages.Size.x > 100.0f;
    }

    static bool messagesAreBelow() {
        const ImGuiWindow& messages = window("Messages");
        const ImGuiWindow& counter = window("Counter");
        return messages.DockIsActive && counter.DockIsActive && messages.Pos.y >= counter.Pos.y + counter.Size.y &&
            messages.Size.x == counter.Size.x;
    }
};

TEST_F(ProjectLayoutTest, AWindowDockedElsewhereIsThereWhenTheProjectIsOpenedAgain) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    const ImVec2 size = window("Messages").Size;
    chosenFolder = path("second");
    EXPECT_TRUE(play("another", [](ImGuiTestContext& user) { choose(user, "File/Open project..."); }));
    draw(5);
    EXPECT_EQ(session.folder(), path("second").c_str());
    EXPECT_TRUE(messagesAreBelow());
    chosenFolder = path("first");
    EXPECT_TRUE(play("back", [](ImGuiTestContext& user) { choose(user, "File/Open project..."); }));
    draw(5);
    EXPECT_TRUE(messagesAreLeft());
    EXPECT_EQ(window("Messages").Size.x, size.x);
}

TEST_F(ProjectLayoutTest, TheLayoutIsThereInTheFirstFrameAfterAProjectIsOpened) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    ASSERT_TRUE(open("second"));
    draw(5);
    ASSERT_TRUE(open("first"));
    draw();
    EXPECT_TRUE(messagesAreLeft());
}

TEST_F(ProjectLayoutTest, AnotherEditorFindsTheLayoutThatWasThereAtTheEnd) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    EXPECT_TRUE(play("quit", [](ImGuiTestContext& user) { choose(user, "File/Quit"); }));
    draw();
    ASSERT_TRUE(frame.isFinished());
    const std::string saved = layout("first");
    EXPECT_NE(saved.find("[Window][Messages]"), std::string::npos);
    // A library that has seen no window yet, as at the beginning of a process.
    ImGuiContext* const before = ImGui::GetCurrentContext();
    ImGuiContext* const fresh = ImGui::CreateContext();
    ImGui::SetCurrentContext(fresh);
    ImGuiIO& io = ImGui::GetIO();
    io.IniFilename = nullptr;
    io.DisplaySize = {1280.0f, 720.0f};
    io.ConfigFlags |= ImGuiConfigFlags_DockingEnable;
    io.BackendFlags |= ImGuiBackendFlags_RendererHasTextures;
    {
        JobSystem otherJobs{0};
        EditorSession other{&otherJobs};
        ASSERT_TRUE(other.open(path("first").c_str()));
        for(const char* const title: {"Messages", "Counter"}) other.state().registerView(title);
        ProjectLayout restored{other.editor()};
        EXPECT_TRUE(restored.load());
        EXPECT_TRUE(other.editor().layoutLoadScheduled);
        for(int i = 0; i != 3; ++i) {
            ImGui::NewFrame();
            restored.draw();
            for(const char* const title: {"Messages", "Counter"}) {
                ImGui::Begin(title);
                ImGui::End();
            }
            ImGui::Render();
        }
        EXPECT_TRUE(messagesAreLeft());
    }
    ImGui::DestroyContext(fresh);
    ImGui::SetCurrentContext(before);
}

TEST_F(ProjectLayoutTest, WithoutAFileTheWindowsAreWhereTheyAreAtFirst) {
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_FALSE(session.editor().layoutLoadScheduled);
    EXPECT_TRUE(fillsTheSpace("Counter"));
    EXPECT_EQ(log.last()->text, ("Opened " + path("first")).c_str());
}

TEST_F(ProjectLayoutTest, AFileThatCannotBeLoadedGivesTheFirstLayoutAndAMessage) {
    const std::pair<const char*, const char*> cases[]{
        {"", ": is empty"},
        {"\n \n", ": is empty"},
        {"\x01\x02\x03garbage\n", ": is no text"},
        {"{\"layout\": 1}\n", ":1: this is no layout"},
        {"[Window][Counter]\nPos=1,2\n", ": has no dock space of the editor"},
        {"[Window][Counter]\nPos=1,2", ": ends in the middle of a line"},
        {"[Docking][Data]\nDockSpace ID=0x00000001 Parent=0x00000001 SizeRef=1,1\n",
            ":2: this panel lies in one that is not there"},
    };
    for(const auto& [text, problem]: cases) {
        writeLayout("first", text);
        ASSERT_TRUE(open("first"));
        EXPECT_EQ(messages(warning(problem).c_str()), problem == cases[1].second && text[0] ? 2 : 1) << problem;
        EXPECT_FALSE(session.editor().layoutLoadScheduled);
        draw(5);
        EXPECT_TRUE(fillsTheSpace("Counter"));
        ASSERT_TRUE(open("second"));
        draw(2);
    }
}

TEST_F(ProjectLayoutTest, AFileThatIsNoneOrTooLargeIsNotRead) {
    std::filesystem::create_directories(file("first"));
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(messages(warning(": is no file").c_str()), 1);
    ASSERT_TRUE(open("second"));
    std::filesystem::remove(file("first"));
    // Nobody writes into this pipe, so who reads from it waits.
    ASSERT_EQ(mkfifo(file("first").c_str(), 0600), 0);
    ASSERT_TRUE(frame.open(path("first").c_str()));
    EXPECT_EQ(messages(warning(": is no file").c_str()), 2);
    std::filesystem::remove(file("first"));
    ASSERT_TRUE(open("second"));
    writeLayout("first", std::string(2 << 20, '\n'));
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(messages(warning(": is too large").c_str()), 1);
}

TEST_F(ProjectLayoutTest, ResetLayoutPutsTheWindowsBackWhileTheyAreOpen) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    EXPECT_TRUE(play("reset", [](ImGuiTestContext& user) {
        choose(user, "View/Reset layout");
        user.Yield(4);
    }));
    EXPECT_TRUE(messagesAreBelow());
    EXPECT_TRUE(isOpen("Messages"));
    // A second time there is nothing to put back.
    EXPECT_TRUE(play("reset", [](ImGuiTestContext& user) {
        choose(user, "View/Reset layout");
        user.Yield(4);
    }));
    EXPECT_TRUE(messagesAreBelow());
}

TEST_F(ProjectLayoutTest, ResetLayoutBringsBackAWindowThatFloats) {
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_TRUE(play("undock", [](ImGuiTestContext& user) {
        user.UndockWindow("//Counter");
        user.Yield(2);
    }));
    EXPECT_FALSE(window("Counter").DockIsActive);
    EXPECT_TRUE(play("reset", [](ImGuiTestContext& user) {
        choose(user, "View/Reset layout");
        user.Yield(4);
    }));
    EXPECT_TRUE(fillsTheSpace("Counter"));
}

TEST_F(ProjectLayoutTest, WithoutAProjectThereIsNoLayoutToReset) {
    draw(2);
    EXPECT_TRUE(play("reset", [](ImGuiTestContext& user) {
        choose(user, "View");
        IM_CHECK(user.ItemInfo("//$FOCUSED/Reset layout").ItemFlags & ImGuiItemFlags_Disabled);
        user.PopupCloseAll();
    }));
}

TEST_F(ProjectLayoutTest, AChangeIsSavedAfterAWhileAndAtOnceWhenTheProjectIsLeft) {
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_FALSE(std::filesystem::exists(file("first")));
    isOpen("Messages") = true;
    EXPECT_TRUE(play("dock", [](ImGuiTestContext& user) {
        user.Yield(2);
        user.DockInto("//Messages", "//Counter", ImGuiDir_Left);
    }));
    // The library waits for five seconds, that others may change, too.
    constexpr int Frames = 6 * 60;
    draw(Frames);
    EXPECT_NE(layout("first").find("[Window][Messages]"), std::string::npos);
    EXPECT_FALSE(ImGui::GetIO().WantSaveIniSettings);
    const auto written = std::filesystem::last_write_time(file("first"));
    draw(Frames);
    EXPECT_EQ(std::filesystem::last_write_time(file("first")), written);
    std::filesystem::remove(file("first"));
    ASSERT_TRUE(open("second"));
    EXPECT_NE(layout("first").find("[Window][Messages]"), std::string::npos);
}

TEST_F(ProjectLayoutTest, AProjectThatIsNotOpenedKeepsTheLayoutOfTheOther) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    write("second", "no project");
    EXPECT_FALSE(open("second"));
    draw(5);
    EXPECT_TRUE(messagesAreLeft());
}

TEST_F(ProjectLayoutTest, AViewThatTheLayoutDoesNotKnowJoinsTheLargePanel) {
    ASSERT_TRUE(open("first"));
    draw(5);
    ASSERT_TRUE(open("second"));
    std::string text = layout("first");
    const std::size_t begin = text.find("[Window][Counter]");
    ASSERT_NE(begin, std::string::npos);
    text.erase(begin, text.find("\n\n", begin) + 2 - begin);
    writeLayout("first", text);
    EXPECT_TRUE(play("undock", [](ImGuiTestContext& user) {
        user.Yield(3);
        user.UndockWindow("//Counter");
        user.Yield(2);
    }));
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(session.editor().layoutLoadScheduled);
    draw(3);
    EXPECT_TRUE(fillsTheSpace("Counter"));
}

TEST_F(ProjectLayoutTest, AClosedViewComesBackToItsPlace) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    isOpen("Messages") = false;
    draw(3);
    ASSERT_TRUE(open("second"));
    draw(3);
    ASSERT_TRUE(open("first"));
    draw(3);
    isOpen("Messages") = true;
    draw(3);
    EXPECT_TRUE(messagesAreLeft());
}

TEST_F(ProjectLayoutTest, AFileThatIsALinkIsNotWrittenThrough) {
    write("victim", "precious");
    std::filesystem::create_directories(file("first").parent_path());
    std::filesystem::create_symlink("../../victim/project.json", file("first"));
    ASSERT_TRUE(open("first"));
    draw(5);
    for(int i = 0; i != 2; ++i) {
        ImGui::GetIO().WantSaveIniSettings = true;
        draw(3);
    }
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(read("victim"), "precious");
    EXPECT_TRUE(std::filesystem::is_symlink(file("first")));
    const std::string text = ": is a link, and nothing is written to where it leads";
    EXPECT_EQ(messages(("ProjectLayout::save(): " + file("first").string() + text).c_str()), 1);
}

TEST_F(ProjectLayoutTest, AFileWithoutRightsIsToldAndStays) {
    writeLayout("first", "[Window][Counter]\nPos=1,2\n");
    std::filesystem::permissions(file("first"), std::filesystem::perms::none);
    const OrdinaryUser user{root.string()};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(messages(warning(": cannot be read").c_str()), 1);
    EXPECT_FALSE(session.editor().layoutLoadScheduled);
    draw(5);
    EXPECT_TRUE(fillsTheSpace("Counter"));
    const std::size_t count = log.count();
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(log.problemsSince(count), "");
    std::filesystem::permissions(file("first"), std::filesystem::perms::owner_all);
    EXPECT_EQ(layout("first"), "[Window][Counter]\nPos=1,2\n");
}

TEST_F(ProjectLayoutTest, AFileThatMayOnlyBeReadIsLoadedAndStays) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    ASSERT_TRUE(open("second"));
    const std::string before = layout("first");
    for(const std::filesystem::path& path: {file("first"), file("first").parent_path()})
        std::filesystem::permissions(path, std::filesystem::perms::owner_write, std::filesystem::perm_options::remove);
    const OrdinaryUser user{root.string()};
    if(!user.isOrdinary) GTEST_SKIP() << "permissions do not bind the superuser, who cannot become another user here";
    ASSERT_TRUE(open("first"));
    draw(5);
    EXPECT_TRUE(messagesAreLeft());
    EXPECT_TRUE(play("reset", [](ImGuiTestContext& user) {
        choose(user, "View/Reset layout");
        user.Yield(4);
    }));
    const std::size_t count = log.count();
    ASSERT_TRUE(open("second"));
    EXPECT_EQ(log.problemsSince(count), "");
    EXPECT_EQ(layout("first"), before);
}

TEST_F(ProjectLayoutTest, AnEditorThatEndsBeforeItsFirstFrameLeavesNoLayout) {
    ASSERT_TRUE(open("first"));
    frame.requestQuit();
    frame.prepare();
    EXPECT_TRUE(frame.isFinished());
    EXPECT_FALSE(std::filesystem::exists(file("first")));
    const std::size_t count = log.count();
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(log.problemsSince(count), "");
}

TEST_F(ProjectLayoutTest, ALayoutThatWasLoadedAndNotDrawnStays) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    ASSERT_TRUE(open("second"));
    ASSERT_TRUE(open("first"));
    ASSERT_TRUE(open("second"));
    ASSERT_TRUE(open("first"));
    EXPECT_TRUE(session.editor().layoutLoadScheduled);
    draw(3);
    EXPECT_TRUE(messagesAreLeft());
}

TEST_F(ProjectLayoutTest, ALayoutThatIsResetAndNotDrawnIsNoneThatCannotBeLoaded) {
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    ProjectLayout layout{session.editor()};
    layout.reset();
    layout.save();
    const std::size_t count = log.count();
    ASSERT_TRUE(open("first"));
    EXPECT_EQ(log.problemsSince(count), "");
}

TEST_F(ProjectLayoutTest, AProjectThatCannotBeWrittenIsOpenedWithoutAWord) {
    ASSERT_TRUE(open("first"));
    std::filesystem::remove_all(root / "first/.editor");
    std::ofstream{root / "first/.editor"};
    draw(3);
    const std::size_t count = log.count();
    ASSERT_TRUE(open("second"));
    EXPECT_FALSE(std::filesystem::exists(file("first")));
    EXPECT_EQ(log.problemsSince(count), "");
}

TEST_F(ProjectLayoutTest, NothingIsWrittenIntoTheFolderThatTheEditorWasStartedIn) {
    const std::filesystem::path startedIn = std::filesystem::current_path();
    std::filesystem::create_directories(root / "started in");
    std::filesystem::current_path(root / "started in");
    ASSERT_TRUE(open("first"));
    draw(5);
    dockMessagesLeft();
    draw(6 * 60);
    frame.requestQuit();
    draw(2);
    EXPECT_TRUE(frame.isFinished());
    EXPECT_TRUE(std::filesystem::is_empty(root / "started in"));
    std::filesystem::current_path(startedIn);
}

}
}
