#pragma once

#include <cstdint>
#include <string>

#include <Corrade/Containers/Array.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "../document/MemoryFileSystem.h"
#include "ChangeManager.h"
#include "QuorvaneEditor/JobSystem.h"
#include "app/Autosave.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine::Test {

/** A project on a disk in memory, which several programs have open one after the other. */
class AutosaveTest: public testing::Test {
protected:
    using Found = Autosave::Found;

    static constexpr const char* File = "/p/.editor/autosave";

    /** A program that has the project open, and may end at any time without a word. */
    struct Program {
        explicit Program(MemoryFileSystem& disk): session{&jobs, &disk}, autosave{session, jobs, disk, tick} {}

        /** A clock that goes on by a millisecond with each look at it, however fast the machine is. */
        static std::int64_t tick() {
            static std::int64_t time = 0;
            return time += 1'000'000;
        }

        Found open(bool isWriting = true) {
            EXPECT_TRUE(session.open("/p"));
            session.makeEditorFolder();
            return autosave.begin(isWriting);
        }

        void push(const char* path, int value) { session.changes().pushChange(path, rapidjson::Value{value}, false); }

        int value(const char* path) {
            const rapidjson::Value* const found = session.project().getValue(path, false);
            return found ? found->GetInt() : -1;
        }

        /** Some seconds go by. */
        void wait(double seconds = Autosave::Quiet + 1.0) {
            for(const double end = now + seconds; now < end; now += 0.1) {
                autosave.update(now);
                jobs.runMainThreadJobs();
            }
        }

        JobSystem jobs{0};
        EditorSession session;
        Autosave autosave;
        double now = 0.0;
    };

    AutosaveTest() {
        disk.put("/p/project.json", R"({"x": 1})");
        disk.put("/p/localization/de.json", R"({"t": {"text": "Hallo"}})");
    }

    /** A program that crashed with an unsaved change. */
    void crash() {
        Program program{disk};
        ASSERT_EQ(program.open(), Found::Nothing);
        program.push("/x", 2);
        program.wait();
        ASSERT_TRUE(disk.exists(File));
    }

    std::string read(const char* const path = File) {
        Containers::String bytes;
        EXPECT_EQ(disk.readFile(path, bytes), 0);
        return {bytes.data(), bytes.size()};
    }

    /** Whether there are bytes that are not in place. */
    bool isAnythingAside() {
        Containers::Array<Containers::String> names;
        EXPECT_EQ(disk.listFolder("/p/.editor", names), 0);
        for(const Containers::StringView name: names)
            if(name.hasSuffix(".new") || name.hasSuffix(".now")) return true;
        return false;
    }

    MemoryFileSystem disk;
};

}
