#include "ChangeManager.h"

#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "QuorvaneEditor/ProjectFile.h"
#include "support/Json.h"

/* Random sequences of edits, groups, undo and redo, against a plain model that keeps texts instead of values, resolves every path
   with the JSON library's pointers and is in no hurry. Document, log, marks and what handlers hear are compared at every step. */

namespace QuorvaneEngine {
namespace {

using rapidjson::Document;
using rapidjson::Pointer;
using rapidjson::Value;
using Test::load;
using Test::parsed;
using Test::toText;

using Text = std::optional<std::string>;

std::string shown(const Text& text) { return text ? *text : "()"; }

/** Of a number that may be an array index of the model: few digits, no sign. */
bool isIndex(const std::string& token) {
    return !token.empty() && token.find_first_not_of("0123456789") == std::string::npos;
}

class ModelDocument {
public:
    explicit ModelDocument(const std::string& json): _document{parsed(json)} {}

    ModelDocument(const ModelDocument& other): ModelDocument{other.text()} {}

    std::string text() const { return toText(_document); }

    Text at(const std::string& path) {
        const Value* const value = Pointer{path.c_str()}.Get(_document);
        return value ? Text{toText(*value)} : Text{};
    }

    /** Returns false where the algorithm ends the process. */
    bool apply(const std::string& path, const Text& before, const Text& after) {
        if(!after) {
            remove(path);
            return true;
        }
        if(before) {
            set(path, *after);
            return true;
        }
        return create(path, *after);
    }

private:
    void set(const std::string& path, const std::string& text) {
        Pointer{path.c_str()}.Create(_document).CopyFrom(parsed(text), _document.GetAllocator());
    }

    void remove(const std::string& path) {
        Pointer{path.c_str()}.Erase(_document);
        std::string container = path.substr(0, path.rfind('/'));
        while(!container.empty()) {
            const Value* const value = Pointer{container.c_str()}.Get(_document);
            if(!value || !(value->IsObject() ? value->ObjectEmpty() : value->IsArray() && value->Empty())) return;
            if(container.rfind('/') == 0) return;
            Pointer{container.c_str()}.Erase(_document);
            container = container.substr(0, container.rfind('/'));
        }
    }

    bool create(const std::string& path, const std::string& text) {
        const std::string parentPath = path.substr(0, path.rfind('/'));
        const std::string token = path.substr(path.rfind('/') + 1);
        const Value* const parent = Pointer{parentPath.c_str()}.Get(_document);
        const bool isInserted = isIndex(token) && (!parent || !parent->IsObject());
        if(!isInserted) {
            set(path, text);
            return true;
        }
        bool existed;
        Value& container = Pointer{path.c_str()}.Create(_document, _document.GetAllocator(), &existed);
        if(!existed) container.SetArray();
        if(!container.IsArray()) return false;
        const auto position = rapidjson::SizeType(std::stoul(token));
        if(container.Size() <= position) {
            set(path, text);
            return true;
        }
        Value element;
        element.CopyFrom(parsed(text), _document.GetAllocator());
        container.PushBack(element, _document.GetAllocator());
        for(rapidjson::SizeType i = container.Size() - 1; i > position; --i) container[i].Swap(container[i - 1]);
        return true;
    }

    Document _document;
};

struct ModelChange {
    std::string path;
    Text before;
    Text after;
    int group;
};

const std::vector<std::string> ListenedKeys{"a", "list", "b"};

class Model {
public:
    explicit Model(const std::string& json): document{json} {}

    bool push(const std::string& path, const Text& value, bool merge) {
        std::optional<std::size_t> match;
        if(merge && last > 0 && log[last].group == group) {
            for(int i = last; i > 0 && log[i].group == group; --i) {
                if(log[i].path != path) continue;
                match = i;
                break;
            }
        }
        if(match) std::swap(log[*match], log[last]);
        else {
            ++last;
            log.resize(last);
            if(saved == last) saved = -1;
            log.push_back({path, document.at(path), {}, 0});
        }
        log[last].after = value;
        log[last].group = group;
        return apply(log[last]);
    }

    void commit() {
        const int committed = group;
        group = -1;
        if(last < 0) return;
        int first = last + 1;
        while(first > 0 && log[first - 1].group == committed) --first;
        for(int i = first; i <= last; ++i) notify(log[i]);
    }

    bool undo() {
        if(last == -1) return true;
        const int step = log[last].group < 0 ? 0 : log[last].group;
        do {
            const ModelChange& change = log[last];
            if(!apply({change.path, change.after, change.before, -1})) return false;
            --last;
        } while(last != -1 && log[last].group == step);
        return true;
    }

    bool redo() {
        if(last + 1 == int(log.size())) return true;
        if(!apply(log[++last])) return false;
        const int step = log[last].group < 0 ? 0 : log[last].group;
        while(last + 1 != int(log.size()) && log[last + 1].group == step)
            if(!apply(log[++last])) return false;
        return true;
    }

    std::string text() const {
        std::string text = document.text() + "\n";
        for(const ModelChange& change: log)
            text += change.path + " " + shown(change.before) + " -> " + shown(change.after) + ", " +
                std::to_string(change.group) + "\n";
        text += "last " + std::to_string(last) + ", unsaved " + std::to_string(saved != last) + "\n";
        for(const std::string& call: heard) text += call + "\n";
        return text;
    }

    ModelDocument document;
    std::vector<ModelChange> log;
    std::vector<std::string> heard;
    int last = -1;
    int saved = -1;
    int group = -1;

private:
    bool apply(const ModelChange& change) {
        if(!document.apply(change.path, change.before, change.after)) return false;
        if(group < 0) notify(change);
        return true;
    }

    void notify(const ModelChange& change) {
        std::size_t begin = 0;
        while(begin <= change.path.size()) {
            const std::size_t end = std::min(change.path.find('/', begin), change.path.size());
            const std::string piece = change.path.substr(begin, end - begin);
            for(const std::string& key: ListenedKeys)
                if(piece == key) heard.push_back(key + ": " + change.path + " " + shown(change.after));
            begin = end + 1;
        }
    }
};

/** The real thing, told in the model's words. */
class Subject {
public:
    explicit Subject(const std::string& json) {
        load(project, json);
        for(const std::string& key: ListenedKeys)
            changes.addChangeHandler(
                key.c_str(),
                [this, key](const Change& change, Containers::ArrayView<Containers::StringView>, void*) {
                    heard.push_back(key + ": " + pathOf(change) + " " + shown(change.newValue));
                },
                nullptr);
    }

    void push(const std::string& path, const Text& value, bool merge) {
        if(!value) return changes.pushChange(Containers::String{path.data(), path.size()}, nullptr, merge);
        changes.pushChange(Containers::StringView{path.data(), path.size()}, parsed(*value), merge);
    }

    std::string text() {
        std::string text = toText(project) + "\n";
        for(const Change& change: changes.changes())
            text += pathOf(change) + " " + shown(change.oldValue) + " -> " + shown(change.newValue) + ", " +
                std::to_string(change.group) + "\n";
        text += "last " + std::to_string(changes.lastChangeIndex()) + ", unsaved " +
            std::to_string(changes.hasUnsavedChanges()) + "\n";
        for(const std::string& call: heard) text += call + "\n";
        return text;
    }

    ProjectFile project;
    ChangeManager changes{project};
    std::vector<std::string> heard;

private:
    static std::string pathOf(const Change& change) { return {change.path.data(), change.path.size()}; }

    static std::string shown(const Containers::Pointer<Value>& value) { return value ? toText(*value) : "()"; }
};

class Random {
public:
    explicit Random(unsigned seed): _engine{seed} {}

    /** From 0 to @p count less one. */
    std::size_t below(std::size_t count) { return std::uniform_int_distribution<std::size_t>{0, count - 1}(_engine); }

    template <class T> const T& of(const std::vector<T>& values) { return values[below(values.size())]; }

private:
    std::mt19937 _engine;
};

const std::vector<std::string> Tokens{
    "a", "b", "list", "long", "0", "1", "2", "5", "x~1y", "x~0y", "007", "", "many", "k3", "k40"};

const std::vector<std::string> Values{"0", "1", "\"text\"", "\"a text that is longer than a few bytes\"", "null", "{}",
    "[]", R"({"a":1,"b":{"list":[1]}})", "[[1,2],[3]]", "[{\"a\":1}]"};

/** With an object that is large enough to be looked up through the project's index. */
std::string startDocument() {
    std::string many;
    for(int i = 0; i != 50; ++i) many += (i ? ",\"k" : "\"k") + std::to_string(i) + "\":" + std::to_string(i);
    return R"({"a":{"b":{"a":1},"list":[1,[2,3],{"a":4}],"x/y":5,"x~y":6},"list":[[0,1],[2]],"5":{"0":"zero"},"long":{},)"
           R"("many":{)" +
        many + "}}";
}

std::string randomPath(Random& random) {
    std::string path;
    for(std::size_t i = 0, depth = 1 + random.below(4); i != depth; ++i) path += "/" + random.of(Tokens);
    return path;
}

/** Does one random step to both. Returns false when the model has come to where the algorithm ends the process, which the real
    thing is then spared. */
bool step(Random& random, Model& model, Subject& subject) {
    const std::size_t action = random.below(100);
    if(action < 60) {
        const std::string path =
            random.below(3) ? randomPath(random) : (random.below(2) ? "/a/" : "/many/") + random.of(Tokens);
        const Text value = random.below(4) ? Text{random.of(Values)} : Text{};
        const bool merge = random.below(2) == 0;
        Model trial = model;
        if(!trial.push(path, value, merge)) return true;
        model.push(path, value, merge);
        subject.push(path, value, merge);
    } else if(action < 70) {
        if(model.group != -1) return true;
        model.group = subject.changes.openGroup();
    } else if(action < 80) {
        model.commit();
        subject.changes.commit();
    } else if(action < 83) {
        model.saved = model.last;
        subject.changes.markSave();
    } else {
        if(model.group != -1) return true;
        const bool isUndo = action < 94;
        Model trial = model;
        if(!(isUndo ? trial.undo() : trial.redo())) return false;
        if(isUndo) {
            model.undo();
            subject.changes.undoLast();
        } else {
            model.redo();
            subject.changes.redoLastUndo();
        }
    }
    return true;
}

class ChangeManagerModel: public testing::TestWithParam<unsigned> {};

TEST_P(ChangeManagerModel, BehavesLikeTheDocumentedAlgorithm) {
    int steps = 0;
    for(unsigned sequence = 0; sequence != 40; ++sequence) {
        Random random{GetParam() * 1000 + sequence};
        Model model{startDocument()};
        Subject subject{startDocument()};
        for(int i = 0; i != 60 && step(random, model, subject); ++i, ++steps)
            ASSERT_EQ(subject.text(), model.text()) << "sequence " << sequence << ", step " << i;
    }
    // A run in which next to every sequence ends early proves little.
    EXPECT_GT(steps, 500);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ChangeManagerModel, testing::Range(1u, 9u));

/** What can be undone and redone without a trace: sets, of which all merge that can, and creations in containers that have
    members already, beside sets that do not merge. A merge swaps entries, so that what does not merge may come back in another
    order. */
class ChangeManagerRoundTrip: public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override {
        Random random{GetParam()};
        for(int i = 0; i != 300; ++i) {
            const std::size_t action = random.below(6);
            if(action == 0) {
                if(!subject.changes.isGroupOpen()) subject.changes.openGroup();
            } else if(action == 1) subject.changes.commit();
            else edit(random, i, action == 2);
        }
        subject.changes.commit();
    }

    virtual void edit(Random& random, int step, bool mayCreate) {
        const std::vector<std::string> containers{"/objects", "/objects/door", "/terms", "/terms/1"};
        if(mayCreate) subject.push(random.of(containers) + "/new" + std::to_string(step), random.of(Values), false);
        else subject.push(random.of(Leaves), random.of(Values), false);
    }

    void goBackAndForth() {
        const std::string last = toText(subject.project);
        ASSERT_NE(First, last);
        for(int i = 0; i != 3; ++i) {
            while(subject.changes.canUndo()) subject.changes.undoLast();
            ASSERT_EQ(toText(subject.project), First);
            while(subject.changes.canRedo()) subject.changes.redoLastUndo();
            ASSERT_EQ(toText(subject.project), last);
        }
    }

    static inline const std::string First =
        R"({"objects":{"door":{"text":"a","size":[1,2,3]},"key":{"text":"b"}},"terms":{"1":{"t":true},"a/b":{"t":false}}})";
    static inline const std::vector<std::string> Leaves{
        "/objects/door/text", "/objects/door/size/1", "/objects/key/text", "/terms/1/t", "/terms/a~1b/t"};

    Subject subject{First};
};

class ChangeManagerMergedRoundTrip: public ChangeManagerRoundTrip {
protected:
    void edit(Random& random, int, bool) override { subject.push(random.of(Leaves), random.of(Values), true); }
};

TEST_P(ChangeManagerRoundTrip, UndoingAndRedoingAllGivesTheFirstAndTheLastDocument) { goBackAndForth(); }

TEST_P(ChangeManagerMergedRoundTrip, UndoingAndRedoingAllGivesTheFirstAndTheLastDocument) {
    EXPECT_LT(subject.changes.changes().size(), 200u);
    goBackAndForth();
}

INSTANTIATE_TEST_SUITE_P(Seeds, ChangeManagerRoundTrip, testing::Range(1u, 11u));
INSTANTIATE_TEST_SUITE_P(Seeds, ChangeManagerMergedRoundTrip, testing::Range(1u, 11u));

}
}
