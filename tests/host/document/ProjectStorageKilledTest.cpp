#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "ProjectStorageTest.h"
#include "host/localization/TestFolder.h"

/* A program that is killed while it saves: whatever the moment, the project is as it was saved last, or as it was about to be. */

namespace QuorvaneEngine {
namespace {

constexpr int Kills = 200;

/** What a program that saves says of itself: the number of the state that it begins to save, or has saved. */
struct Report {
    std::int64_t state;
    bool isSaved;
};

class ProjectStorageKilledTest: public ProjectStorageTest {
protected:
    ProjectStorageKilledTest() {
        project.write("project.json", R"({"state": 0, "localization": {"terms": {}}})");
        for(const char* const code: {"de", "es", "fr"})
            project.write("localization/" + std::string{code} + ".json", R"({"state": 0})");
    }

    /** Each state differs in all files, and every other one has a file less. */
    void set(rapidjson::Document& changed, const std::int64_t state) {
        auto& allocator = changed.GetAllocator();
        changed["state"].SetInt64(state);
        rapidjson::Value& all = changed["localization"]["translations"];
        all.RemoveMember("es");
        if(state % 2 == 0) all.AddMember("es", rapidjson::Value{rapidjson::kObjectType}, allocator);
        for(auto& language: all.GetObject()) {
            language.value.SetObject();
            language.value.AddMember("state", state, allocator);
            // Long enough for several pages.
            const std::string text(4000, char('a' + state % 26));
            for(const char* const key: {"a", "b", "c"})
                language.value.AddMember(
                    rapidjson::StringRef(key), rapidjson::Value{text.c_str(), allocator}, allocator);
        }
    }

    /** The number of the state that the files hold, all of them; -1 where they do not agree. */
    std::int64_t stateOf(rapidjson::Document& read) {
        const std::int64_t state = read["state"].GetInt64();
        const rapidjson::Value& all = read["localization"]["translations"];
        bool isWhole = all.MemberCount() == (state % 2 == 0 ? 3u : 2u) && all.HasMember("de") && all.HasMember("fr");
        for(const auto& language: all.GetObject())
            isWhole = isWhole && language.value["state"].GetInt64() == state &&
                (state == 0 || language.value.MemberCount() == 4);
        return isWhole ? state : -1;
    }

    /** Saves one state after another, and never ends by itself. */
    [[noreturn]] void saveForEver(const int pipe) {
        ProjectStorage storage{FileSystem::disk()};
        rapidjson::Document saved{rapidjson::kObjectType};
        const auto tell = [pipe](const Report& report) {
            if(::write(pipe, &report, sizeof(report)) != sizeof(report)) _exit(2);
        };
        if(!storage.lock(project.path.c_str()) || !storage.open(project.path.c_str(), saved)) _exit(3);
        for(std::int64_t state = stateOf(saved) + 1;; ++state) {
            set(saved, state);
            tell({state, false});
            if(!storage.save(saved)) _exit(4);
            tell({state, true});
        }
    }

    const TestFolder project;
};

TEST_F(ProjectStorageKilledTest, AtAnyMomentTheProjectIsAsBeforeOrAfterTheSave) {
    // The moments differ from run to run all the same, with what else the machine does.
    constexpr unsigned Seed = 20;
    std::mt19937 random{Seed};
    int before = 0, after = 0, cut = 0;
    for(int i = 0; i != Kills; ++i) {
        int reports[2];
        ASSERT_EQ(pipe(reports), 0);
        const pid_t child = fork();
        if(child == 0) saveForEver(reports[1]);
        close(reports[1]);
        // From the first report on it is saving nearly all of the time.
        Report report{};
        ASSERT_EQ(read(reports[0], &report, sizeof(report)), ssize_t(sizeof(report)));
        std::int64_t begun = report.state, saved = report.state - 1;
        std::this_thread::sleep_for(std::chrono::microseconds{random() % 20000});
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "kill " << i << ": ended by itself with " << WEXITSTATUS(status);
        while(read(reports[0], &report, sizeof(report)) == ssize_t(sizeof(report)))
            (report.isSaved ? saved : begun) = report.state;
        close(reports[0]);

        cut += std::filesystem::exists(project / ".editor/save");
        ProjectStorage next{FileSystem::disk()};
        ASSERT_TRUE(open(next, project.path)) << "kill " << i << ": " << warning;
        const std::int64_t found = stateOf(document);
        ASSERT_GE(found, saved) << "kill " << i << ": what was saved is lost";
        ASSERT_LE(found, begun) << "kill " << i;
        EXPECT_FALSE(std::filesystem::exists(project / ".editor/save")) << "kill " << i;
        if(begun != saved) (found == saved ? before : after)++;
    }
    std::cout << "seed " << Seed << ": " << cut << " saves were cut short; the project was " << before
              << " times as before and " << after << " times as after a save that had not returned\n";
    // Else the moments tell nothing.
    EXPECT_GT(cut, Kills / 10);
    EXPECT_GT(before, 0);
    EXPECT_GT(after, 0);
}

}
}
