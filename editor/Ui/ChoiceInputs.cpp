#include <cfloat>
#include <charconv>
#include <cstdlib>
#include <limits>

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringIterable.h>
#include <Corrade/Utility/Debug.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "ImGuiGuards.h"
#include "ImGuiText.h"
#include "QuorvaneEditor/JsonObject.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/RapidJsonUtils.h"
#include "Ui/JsonNumbers.h"
#include "Ui/Scope.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

/** How many names a field of bits has, if any. */
constexpr std::size_t NameCount = 8;

/** Of check boxes that stand in a row, and the share of the width that is left of them. */
constexpr int Columns = 4;
constexpr float ColumnsStart = 0.33f;

/** Entries that a drop-down shows before it scrolls. */
constexpr float VisibleEntries = 7.0f;

constexpr UnsignedInt bitMask(const int bit) { return 1u << (UnsignedInt(bit) % 32); }

/** A number in decimal digits. */
class Digits {
public:
    explicit Digits(const int number): _end{std::to_chars(_digits, _digits + sizeof(_digits), number).ptr} {}
    Digits(const Digits&) = delete;
    Digits& operator=(const Digits&) = delete;

    Containers::StringView text() const { return {_digits, std::size_t(_end - _digits)}; }

private:
    char _digits[std::numeric_limits<int>::digits10 + 2];
    const char* _end;
};

/** @param label    empty for the digits of @p bit
    @return the bit's mask where it was toggled, else 0 */
UnsignedInt bitCheckbox(const Containers::StringView label, const int bit, const UnsignedInt bits) {
    const Digits digits{bit};
    bool isSet = bits & bitMask(bit);
    return Ui::checkbox(label.isEmpty() ? digits.text() : label, &isSet) ? bitMask(bit) : 0;
}

bool editBool(Ui& ui, const Containers::StringView name, const Containers::StringView label) {
    const Scope scope{&ui, name};
    bool value = JsonObject{ui.project->getValue(ui.scopePath(), false)}.asBool();
    if(!Ui::checkbox(label, &value)) return false;
    ui.changes->pushChange(ui.scopePath(), rapidjson::Value{value}, false);
    return true;
}

/** Lowers the next box to the middle of the label before it, which is higher. */
void levelWithLabel() {
    const float gap = ImGui::GetFrameHeight() - Ui::checkboxHeight();
    ImGui::GetCurrentWindow()->DC.CursorPos.y += ImTrunc(ImMax(0.5f * gap, 0.0f));
}

/** Continues with the box behind that of a bit: beside it, or in the next row. */
void goToNextBox(const int bit, const float start, const float step) {
    const int column = (bit + 1) % Columns;
    if(column == 0) ImGui::Dummy({1.0f, 1.0f});
    Ui::sameLineAt(start + float(column) * step);
}

}

bool Ui::checkbox(const Containers::StringView name) { return editBool(*this, name, name); }

bool Ui::checkboxUnlabled(const Containers::StringView name) { return editBool(*this, name, "##" + name); }

bool Ui::checkboxBit(const Containers::StringView name, const int bit, const Containers::StringView label) {
    const Scope scope{this, name};
    const rapidjson::Value* const value = project->getValue(scopePath(), false);
    if(!(flags & Flag::NoLabel)) {
        Ui::label(name);
        levelWithLabel();
    }
    const IdGuard id{bit};
    const UnsignedInt toggled = bitCheckbox(label, bit, jsonBits(value));
    if(toggled) changes->pushChange(scopePath(), toggledBits(value, toggled), false);
    return toggled;
}

bool Ui::checkboxBits(const Containers::StringView name, const int count,
    const Containers::ArrayView<const Containers::StringView> names) {
    if(!names.isEmpty() && names.size() != NameCount) {
        Corrade::Utility::Error{} << "Ui::checkboxBits(): expected names to have" << count << "elements";
        std::abort();
    }
    // The path is shown for all boxes, which the group makes one item.
    const Scope scope{this, name};
    const GroupGuard group;
    const rapidjson::Value* const value = project->getValue(scopePath(), false);
    const UnsignedInt bits = jsonBits(value);
    if(!(flags & Flag::NoLabel)) label(name);

    const float width = ImGui::GetCurrentWindow()->ContentRegionRect.GetWidth();
    const float start = ColumnsStart * width;
    const float step = (width - start) / float(Columns);
    UnsignedInt toggled = 0;
    for(int bit = 0; bit < count; ++bit) {
        const bool isNamed = std::size_t(bit) < names.size();
        if(bit < Columns && !(flags & Flag::NoLabel)) levelWithLabel();
        toggled ^= bitCheckbox(isNamed ? names[std::size_t(bit)] : Containers::StringView{}, bit, bits);
        goToNextBox(bit, start, step);
    }
    if(toggled) changes->pushChange(scopePath(), toggledBits(value, toggled), false);
    return toggled;
}

bool Ui::inputEnum(const Containers::StringView name, const Containers::StringIterable& values) {
    const Scope scope{this, name};
    const Containers::StringView current = JsonObject{project->getValue(scopePath(), false)}.asString();
    const auto index = std::size_t(RapidJsonUtils::enumStringToValue(current, values));
    valueLabel(name);

    const ImGuiStyle& style = ImGui::GetStyle();
    const float entries = VisibleEntries * (ImGui::GetFontSize() + style.ItemSpacing.y) - style.ItemSpacing.y;
    ImGui::SetNextWindowSizeConstraints({}, {FLT_MAX, 2.0f * style.WindowPadding.y + entries});
    bool isChanged = false;
    // What is none of the values is shown as it is, so that it can be seen and repaired.
    if(const ComboGuard combo{ImGui::BeginCombo(
           "##val", ImGuiText{index < values.size() ? values[index] : current}, ImGuiComboFlags_None)})
        for(std::size_t i = 0; i != values.size(); ++i) {
            const IdGuard id{int(i)};
            if(!ImGui::Selectable(ImGuiText{values[i]})) continue;
            changes->pushChange(scopePath(), values[i], false);
            isChanged = true;
        }
    valueContextMenu();
    return isChanged;
}

}
