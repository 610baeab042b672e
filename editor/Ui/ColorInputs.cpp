#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/JsonNumbers.h"
#include "Ui/Scope.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

constexpr UnsignedInt MaxComponents = 4;

/** The library shows components as integers of 32 bits, where 1 is 255. */
constexpr float Limit = 1.0e6f;

/** A component that can be shown and stored. Who types "nan" gets 0. */
float component(const float number) { return std::isnan(number) ? 0.0f : std::clamp(number, -Limit, Limit); }

bool editColor(
    Ui& ui, const Containers::StringView name, const rapidjson::Value* const value, const UnsignedInt count) {
    float color[MaxComponents];
    for(UnsignedInt i = 0; i != MaxComponents; ++i) color[i] = component(jsonFloat(jsonElement(value, i)));
    ui.valueLabel(name);
    const bool isChanged = count == 3 ? ImGui::ColorEdit3("##val", color, ImGuiColorEditFlags_None)
                                      : ImGui::ColorEdit4("##val", color, ImGuiColorEditFlags_AlphaBar);
    if(isChanged) {
        for(float& number: color) number = component(number);
        const Containers::ArrayView<const float> components{color, count};
        ui.changes->pushChange(ui.scopePath(), toJson(components, ui.project->allocator()), true);
    }
    // It may be open in the frame of a change: who opens it leaves the field.
    ui.valueContextMenu();
    return isChanged;
}

}

bool Ui::colorEdit3(const Containers::StringView name) {
    const Scope scope{this, name};
    return editColor(*this, name, project->getValue(scopePath(), false), 3);
}

bool Ui::colorEdit4(const Containers::StringView name) {
    const Scope scope{this, name};
    const rapidjson::Value* const value = project->getValue(scopePath(), false);
    if(!jsonElement(value, 3)) {
        Corrade::Utility::Error{} << "Ui::colorEdit4(): Json array for" << name << "too small";
        std::abort();
    }
    return editColor(*this, name, value, 4);
}

}
