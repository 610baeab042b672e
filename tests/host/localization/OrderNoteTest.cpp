#include "OrderNote.h"

#include <algorithm>
#include <random>
#include <string>

#include "I18NextReader.h"
#include "I18NextWriter.h"
#include "JsonReader.h"
#include "TermTree.h"
#include "TestProject.h"

namespace QuorvaneEngine {

namespace {

struct Keys {
    explicit Keys(const std::vector<std::string>& keys): keys{keys} {
        Int other = -1;
        for(std::size_t i = 0; i != keys.size(); ++i) tree.insert(viewed(this->keys[i]), Int(i), other);
    }

    std::vector<UnsignedInt> numbers(const std::vector<std::string>& file) const {
        std::vector<UnsignedInt> found;
        for(const std::string& key: file)
            found.push_back(UnsignedInt(std::find(keys.begin(), keys.end(), key) - keys.begin()));
        return found;
    }

    std::vector<std::string> note(const std::vector<std::string>& file, const Catalogue* const order = nullptr) const {
        const std::vector<UnsignedInt> found = numbers(file);
        const OrderNote orderNote{tree, order};
        std::vector<std::string> note;
        for(const UnsignedInt number: orderNote.make({found.data(), found.size()})) note.push_back(keys[number]);
        EXPECT_EQ(orderNote.isInOrder({found.data(), found.size()}), note.empty());
        return note;
    }

    std::vector<std::string> keys;
    TermTree tree;
};

using Note = std::vector<std::string>;

}

TEST(OrderNote, IsEmptyForTheOrderOfTheTerms) {
    const Keys keys{{"a", "m.x", "m.y", "b", "l.[0]", "l.[1]"}};
    EXPECT_EQ(keys.note({"a", "m.x", "m.y", "b", "l.[0]", "l.[1]"}), Note{});
    EXPECT_EQ(keys.note({"m.y", "b"}), Note{});
    EXPECT_EQ(keys.note({}), Note{});
}

TEST(OrderNote, NamesTheBranchesThatDeviate) {
    const Keys keys{{"a", "m.x", "m.y", "b", "n.p", "n.q"}};
    // At the root, one text of each member.
    EXPECT_EQ(keys.note({"b", "m.x", "m.y", "a", "n.p", "n.q"}), (Note{"b", "m.x", "a", "n.p"}));
    // Deeper, its members alone.
    EXPECT_EQ(keys.note({"a", "m.y", "m.x", "b", "n.p", "n.q"}), (Note{"m.y", "m.x"}));
}

TEST(OrderNote, NeedsNoElements) {
    const Keys keys{{"l.[0]", "l.[2].x", "l.[2].y", "l.[1]"}};
    EXPECT_EQ(keys.note({"l.[0]", "l.[1]", "l.[2].x", "l.[2].y"}), Note{});
    EXPECT_EQ(keys.note({"l.[0]", "l.[1]", "l.[2].y", "l.[2].x"}), (Note{"l.[2].y", "l.[2].x"}));
}

TEST(OrderNote, ComparesWithTheOrderThatAnExportWouldHave) {
    const Keys keys{{"a", "b", "c"}};
    Catalogue order;
    for(const char* const key: {"c", "b", "a"}) order.add(key, {});
    EXPECT_EQ(keys.note({"c", "b", "a"}, &order), Note{});
    EXPECT_EQ(keys.note({"a", "b"}, &order), (Note{"a", "b"}));
}

TEST(OrderNote, IsReadFromTheProject) {
    TestProject project{R"({"de": ["b", 1, "a", "b"], "fr": "x", "ja": []})"};
    const auto german = OrderNote::read(&project.project().document(), "de");
    ASSERT_TRUE(german);
    ASSERT_EQ(german->entries().size(), 2u);
    EXPECT_EQ(german->entries()[0].key, "b");
    EXPECT_EQ(german->entries()[1].key, "a");
    EXPECT_TRUE(OrderNote::read(&project.project().document(), "ja"));
    EXPECT_FALSE(OrderNote::read(&project.project().document(), "fr"));
    EXPECT_FALSE(OrderNote::read(&project.project().document(), "en"));
    EXPECT_FALSE(OrderNote::read(nullptr, "de"));
}

TEST(OrderNote, BringsAnyOrderBack) {
    std::mt19937 random{7};
    for(int run = 0; run != 500; ++run) {
        // A file of random members at random depths, which a shuffled tree holds.
        std::string json;
        const auto object = [&](const auto& self, const int depth) -> void {
            json += '{';
            std::vector<int> names{0, 1, 2, 3, 4, 5};
            std::shuffle(names.begin(), names.end(), random);
            names.resize(1 + random() % 6);
            for(std::size_t i = 0; i != names.size(); ++i) {
                json += (i ? ",\"" : "\"") + std::string{'n', char('0' + names[i])} + "\":";
                if(depth != 0 && random() % 3 == 0) self(self, depth - 1);
                else json += "\"text\"";
            }
            json += '}';
        };
        object(object, 3);
        Catalogue file;
        JsonError error;
        ASSERT_TRUE(readI18Next(viewed(json), file, error));

        std::vector<std::string> shuffled;
        for(const CatalogueEntry& entry: file.entries()) shuffled.push_back(copied(entry.key));
        const std::vector<std::string> inFile = shuffled;
        std::shuffle(shuffled.begin(), shuffled.end(), random);
        const Keys keys{shuffled};
        Catalogue note;
        for(const std::string& key: keys.note(inFile)) note.add(viewed(key), {});

        const std::vector<Containers::StringView> texts(shuffled.size(), "text");
        const Containers::String written =
            writeI18Next(keys.tree, {{texts.data(), texts.size()}, {}}, note.entries().isEmpty() ? nullptr : &note);
        rapidjson::Document before, after;
        before.Parse(json.data(), json.size());
        after.Parse(written.data(), written.size());
        EXPECT_EQ(TestProject::printed(after), TestProject::printed(before));
    }
}

}
