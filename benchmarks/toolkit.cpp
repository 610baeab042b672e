/* What a frame costs that edits 1,000 values of a project, 50 objects with each of the 20 value inputs, all of them in sight.

   Time and instructions are ratios to a frame with the same labels and the library's own controls on plain variables, which need
   no document: both are taken in turns in one process, and the median of the pairs' ratios is printed. They count what is between
   the beginning and the end of the window. The lines below are the same of one input each. Instructions are counted by valgrind. */

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <Corrade/Containers/StringIterable.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "BareGui.h"
#include "Callgrind.h"
#include "Figures.h"
#include "ImGuiGuards.h"
#include "Ui/Scope.h"
#include "Ui/Ui.h"
#include "document/EditorSession.h"
#include "support/Allocations.h"

namespace {

using namespace QuorvaneEngine;
using namespace Containers::Literals;

constexpr int Objects = 50;
constexpr int WarmUp = 20;
constexpr int Pairs = 201;
constexpr int InstructionFrames = 5;
constexpr double MaxRatio = 2.0;

/* So that nothing is clipped */
constexpr ImVec2 DisplaySize{900.0f, 60000.0f};

constexpr float LabelShare = 0.33f;
constexpr float MultilineHeight = 60.0f;
constexpr int BitCount = 8;

constexpr Containers::StringView EnumValues[]{"static"_s, "dynamic"_s, "kinematic"_s};
constexpr Containers::StringView Filters[]{"Pictures"_s, "*.png"_s};

/* What one object holds, once more as variables */
struct Plain {
    std::array<float, 4> floats{0.25f, 0.5f, 0.75f, 1.0f};
    std::array<int, 4> ints{1, 2, 3, 4};
    bool flag = true;
    unsigned bits = 5;
    int choice = 1;
    char text[64] = "A lighthouse on a rock";
    char resource[64] = "Stone";
};

void plainLabel(const char* const name) {
    ImGui::AlignTextToFramePadding();
    ImGui::TextUnformatted(name);
    ImGui::SameLine(LabelShare * ImGui::GetContentRegionAvail().x);
    ImGui::SetNextItemWidth(ImGui::GetContentRegionAvail().x);
}

void plainBits(unsigned& bits) {
    const float width = ImGui::GetContentRegionAvail().x;
    for(int i = 0; i != BitCount; ++i) {
        char label[12];
        std::snprintf(label, sizeof(label), "%d", i);
        if(i % 4) ImGui::SameLine((LabelShare + float(i % 4) * 0.25f * (1.0f - LabelShare)) * width);
        else if(i) {
            ImGui::Dummy({1.0f, 1.0f});
            ImGui::SameLine(LabelShare * width);
        }
        ImGui::CheckboxFlags(label, &bits, 1u << i);
    }
}

template <class Drop> void plainCombo(const char* const preview, Drop&& drop) {
    if(!ImGui::BeginCombo("##val", preview)) return;
    drop();
    ImGui::EndCombo();
}

struct Input {
    const char* name;
    const char* value;
    void (*bound)(Ui& ui, Containers::StringView name);
    void (*plain)(Plain& plain, const char* name);
};

/* A number input and the library's */
template <int count> void boundFloats(Ui& ui, const Containers::StringView name) {
    constexpr bool (Ui::*Inputs[])(Containers::StringView, float, float, float, float){
        &Ui::inputFloat, &Ui::inputFloat2, &Ui::inputFloat3, &Ui::inputFloat4};
    (ui.*Inputs[count - 1])(name, 0.0f, 100.0f, 0.01f, 1.0f);
}
template <int count> void plainFloats(Plain& plain, const char* const name) {
    constexpr float Min = 0.0f, Max = 100.0f;
    plainLabel(name);
    ImGui::DragScalarN("##val", ImGuiDataType_Float, plain.floats.data(), count, 0.01f, &Min, &Max, "%.3f");
}
template <int count> void boundInts(Ui& ui, const Containers::StringView name) {
    constexpr bool (Ui::*Inputs[])(Containers::StringView, Int, Int, float, float){
        &Ui::inputInt, &Ui::inputInt2, &Ui::inputInt3, &Ui::inputInt4};
    (ui.*Inputs[count - 1])(name, 0, 100, 0.1f, 1.0f);
}
template <int count> void plainInts(Plain& plain, const char* const name) {
    constexpr int Min = 0, Max = 100;
    plainLabel(name);
    ImGui::DragScalarN("##val", ImGuiDataType_S32, plain.ints.data(), count, 0.1f, &Min, &Max, "%d");
}

/* The library's control follows after its label, where the toolkit draws one */
constexpr Input Inputs[]{
    {"inputFloat", "0.25", boundFloats<1>, plainFloats<1>},
    {"inputFloat2", "[0.25, 0.5]", boundFloats<2>, plainFloats<2>},
    {"inputFloat3", "[0.25, 0.5, 0.75]", boundFloats<3>, plainFloats<3>},
    {"inputFloat4", "[0.25, 0.5, 0.75, 1.0]", boundFloats<4>, plainFloats<4>},
    {"inputInt", "1", boundInts<1>, plainInts<1>},
    {"inputInt2", "[1, 2]", boundInts<2>, plainInts<2>},
    {"inputInt3", "[1, 2, 3]", boundInts<3>, plainInts<3>},
    {"inputInt4", "[1, 2, 3, 4]", boundInts<4>, plainInts<4>},
    {"colorEdit3", "[0.25, 0.5, 0.75]", [](Ui& ui, const Containers::StringView name) { ui.colorEdit3(name); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            ImGui::ColorEdit3("##val", plain.floats.data());
        }},
    {"colorEdit4", "[0.25, 0.5, 0.75, 1.0]", [](Ui& ui, const Containers::StringView name) { ui.colorEdit4(name); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            ImGui::ColorEdit4("##val", plain.floats.data(), ImGuiColorEditFlags_AlphaBar);
        }},
    {"checkbox", "true", [](Ui& ui, const Containers::StringView name) { ui.checkbox(name); },
        [](Plain& plain, const char* const name) { ImGui::Checkbox(name, &plain.flag); }},
    {"checkboxUnlabled", "true", [](Ui& ui, const Containers::StringView name) { ui.checkboxUnlabled(name); },
        [](Plain& plain, const char*) { ImGui::Checkbox("##val", &plain.flag); }},
    {"checkboxBit", "5", [](Ui& ui, const Containers::StringView name) { ui.checkboxBit(name, 2, "two"); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            ImGui::CheckboxFlags("two", &plain.bits, 4);
        }},
    {"checkboxBits", "5", [](Ui& ui, const Containers::StringView name) { ui.checkboxBits(name, BitCount, {}); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            plainBits(plain.bits);
        }},
    {"inputEnum", "\"dynamic\"", [](Ui& ui, const Containers::StringView name) { ui.inputEnum(name, EnumValues); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            plainCombo(EnumValues[plain.choice].data(), [&] {
                for(int i = 0; i != 3; ++i)
                    if(ImGui::Selectable(EnumValues[i].data())) plain.choice = i;
            });
        }},
    {"inputText", "\"A lighthouse on a rock\"", [](Ui& ui, const Containers::StringView name) { ui.inputText(name); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            ImGui::InputText("##val", plain.text, sizeof(plain.text));
        }},
    {"inputTextMultiline", "\"A lighthouse on a rock\"",
        [](Ui& ui, const Containers::StringView name) {
            const ChildGuard child{ImGui::BeginChild(name.data(), {0.0f, MultilineHeight})};
            ui.inputTextMultiline(name, false, true);
        },
        [](Plain& plain, const char* const name) {
            const ChildGuard child{ImGui::BeginChild(name, {0.0f, MultilineHeight})};
            plainLabel(name);
            ImGui::InputTextMultiline("##val", plain.text, sizeof(plain.text), ImGui::GetContentRegionAvail());
        }},
    {"renameable", "\"A lighthouse on a rock\"",
        [](Ui& ui, const Containers::StringView name) { ui.renameable(name, false); },
        [](Plain& plain, const char*) {
            ImGui::TextUnformatted(plain.text);
            ImGui::IsItemHovered();
        }},
    {"selectResource", "\"stone\"",
        [](Ui& ui, const Containers::StringView name) { ui.selectResource(name, "materials", false); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            plainCombo(plain.resource, [] {});
        }},
    {"fileSelect", "\"pictures/rock.png\"",
        [](Ui& ui, const Containers::StringView name) { ui.fileSelect(name, "Choose a picture", Filters); },
        [](Plain& plain, const char* const name) {
            plainLabel(name);
            ImGui::SetNextItemWidth(ImGui::CalcItemWidth() - 40.0f);
            ImGui::InputText("##val", plain.text, sizeof(plain.text));
            ImGui::SameLine();
            ImGui::Button("...");
        }},
};
constexpr int InputCount = int(std::size(Inputs));
static_assert(Objects * InputCount == 1000);

std::string objectName(const int i) { return "object." + std::to_string(i); }

rapidjson::Document project() {
    std::string json = R"({"materials":{"stone":{"name":"Stone"},"wood":{"name":"Wood"}},"objects":{)";
    for(int i = 0; i != Objects; ++i) {
        json += (i ? ",\"" : "\"") + objectName(i) + "\":{";
        for(const Input& input: Inputs) {
            if(&input != Inputs) json += ',';
            json += '"' + std::string{input.name} + "\":" + input.value;
        }
        json += '}';
    }
    json += "}}";
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    return document;
}

/* The same values twice */
class Toolkit {
public:
    Toolkit() {
        _session.replaceDocument(project());
        for(int i = 0; i != Objects; ++i) _names.push_back(objectName(i));
    }

    /* Of all inputs, or of one */
    double bound(const Input* const only = nullptr) {
        _session.beginFrame();
        return _gui.frame([&] {
            const Scope objects{&_ui, "objects"_s};
            for(const std::string& name: _names) {
                const Scope object{&_ui, Containers::StringView{name.data(), name.size()}};
                for(const Input& input: Inputs)
                    if(!only || only == &input) input.bound(_ui, input.name);
            }
        });
    }

    double plain(const Input* const only = nullptr) {
        return _gui.frame([&] {
            for(int i = 0; i != Objects; ++i) {
                const IdGuard object{i};
                for(const Input& input: Inputs) {
                    if(only && only != &input) continue;
                    const IdGuard id{Containers::StringView{input.name}};
                    input.plain(_plain[std::size_t(i)], input.name);
                }
            }
        });
    }

    double ratio(const Input* const only = nullptr) {
        for(int i = 0; i != WarmUp; ++i) {
            plain(only);
            bound(only);
        }
        return medianRatio(
            Pairs, [&] { return bound(only); }, [&] { return plain(only); });
    }

    Int revision() const { return _session.project().revision(); }

private:
    BareGui _gui{DisplaySize};
    mutable EditorSession _session;
    Ui _ui{&_session.project(), &_session.changes(), &_session.data()};
    std::vector<std::string> _names;
    std::array<Plain, Objects> _plain;
};

int verticesOf() { return ImGui::GetDrawData()->TotalVtxCount; }

int countInstructions(const bool isBound) {
    Toolkit toolkit;
    const auto draw = [&] { return isBound ? toolkit.bound() : toolkit.plain(); };
    for(int i = 0; i != WarmUp; ++i) draw();
    CALLGRIND_START_INSTRUMENTATION;
    for(int i = 0; i != InstructionFrames; ++i) draw();
    CALLGRIND_STOP_INSTRUMENTATION;
    return 0;
}

}

int main(const int argc, char** const argv) {
    if(argc == 3 && !std::strcmp(argv[1], "--instructions")) return countInstructions(!std::strcmp(argv[2], "bound"));

    Toolkit toolkit;
    const Int revision = toolkit.revision();
    bool isMet = print("time, 1,000 values", toolkit.ratio(), MaxRatio);
    toolkit.plain();
    const int plainVertices = verticesOf();
    {
        const Test::Allocations allocations;
        toolkit.bound();
        isMet &= print("allocations, 1,000 values", double(allocations.count()), 0.0);
    }
    // What is clipped would cost little.
    if(verticesOf() < plainVertices) {
        std::fprintf(stderr, "%d vertices are fewer than %d\n", verticesOf(), plainVertices);
        isMet = fail("not every input was drawn");
    }
    const double plain = instructionsOf("plain");
    const double bound = instructionsOf("bound");
    if(plain == 0.0 || bound == 0.0) std::printf("instructions are not counted: there is no working valgrind\n");
    else isMet &= print("instructions, 1,000 values", bound / plain, MaxRatio);
    for(const Input& input: Inputs) print(std::string{"time, "} + input.name, toolkit.ratio(&input), NoTarget);
    if(toolkit.revision() != revision) isMet = fail("a frame without an edit changed the project");
    return isMet ? 0 : 1;
}
