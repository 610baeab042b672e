#include <algorithm>
#include <cmath>
#include <limits>

#include <Corrade/Containers/ArrayView.h>
#include <imgui.h>
#include <imgui_internal.h>
#include <rapidjson/document.h>

#include "ChangeManager.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "Ui/JsonNumbers.h"
#include "Ui/Scope.h"
#include "Ui/Ui.h"

namespace QuorvaneEngine {

namespace {

template <class T> struct Number;

template <> struct Number<float> {
    static constexpr ImGuiDataType Type = ImGuiDataType_Float;
    static constexpr char Format[] = "%.3f";

    static float read(const rapidjson::Value* const value) { return jsonFloat(value); }

    /** Who types "1e99" or "nan" gets a number that JSON has. */
    static float storable(const float number) {
        constexpr float max = std::numeric_limits<float>::max();
        return std::isnan(number) ? 0.0f : std::clamp(number, -max, max);
    }
};

template <> struct Number<Int> {
    static constexpr ImGuiDataType Type = ImGuiDataType_S32;
    static constexpr char Format[] = "%d";

    static Int read(const rapidjson::Value* const value) { return jsonInt(value); }
    static Int storable(const Int number) { return number; }
};

template <class T> struct Range {
    T min, max;
    float speed, fastSpeed;
};

/** The frame that all number inputs have in common: what @p drag edits is read before it and pushed behind it.
    @tparam count   of the numbers, which are the elements of an array unless there is one */
template <class T, int count>
bool inputNumbers(Ui& ui, const Containers::StringView name, const Range<T>& range, const ImGuiSliderFlags flags) {
    const Scope scope{&ui, name};
    const rapidjson::Value* const value = ui.project->getValue(ui.scopePath(), false);
    T numbers[count];
    for(int i = 0; i != count; ++i)
        numbers[i] = Number<T>::read(count == 1 ? value : jsonElement(value, UnsignedInt(i)));

    ui.valueLabel(name);
    const float speed = Ui::shortcutKeyPressed() ? range.fastSpeed : range.speed;
    bool isChanged;
    if constexpr(count == 1)
        isChanged = ImGui::DragScalar(
            "##val", Number<T>::Type, numbers, speed, &range.min, &range.max, Number<T>::Format, flags);
    else
        isChanged = ImGui::DragScalarN(
            "##val", Number<T>::Type, numbers, count, speed, &range.min, &range.max, Number<T>::Format, flags);
    if(isChanged) {
        for(T& number: numbers) number = Number<T>::storable(number);
        ui.changes->pushChange(ui.scopePath(),
            count == 1 ? toJson(numbers[0]) : toJson(Containers::ArrayView<const T>{numbers}, ui.project->allocator()),
            true);
    }
    // It may be open in the frame of a change: who opens it leaves the field.
    ui.valueContextMenu();
    return isChanged;
}

}

bool Ui::inputFloat(
    const Containers::StringView name, const float min, const float max, const float speed, const float fastSpeed) {
    return inputNumbers<float, 1>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

bool Ui::inputFloat2(
    const Containers::StringView name, const float min, const float max, const float speed, const float fastSpeed) {
    return inputNumbers<float, 2>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

bool Ui::inputFloat3(
    const Containers::StringView name, const float min, const float max, const float speed, const float fastSpeed) {
    return inputNumbers<float, 3>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

bool Ui::inputFloat4(
    const Containers::StringView name, const float min, const float max, const float speed, const float fastSpeed) {
    return inputNumbers<float, 4>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

bool Ui::inputInt(
    const Containers::StringView name, const Int min, const Int max, const float speed, const float fastSpeed) {
    return inputNumbers<Int, 1>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_AlwaysClamp);
}

bool Ui::inputInt2(
    const Containers::StringView name, const Int min, const Int max, const float speed, const float fastSpeed) {
    return inputNumbers<Int, 2>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

bool Ui::inputInt3(
    const Containers::StringView name, const Int min, const Int max, const float speed, const float fastSpeed) {
    return inputNumbers<Int, 3>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

bool Ui::inputInt4(
    const Containers::StringView name, const Int min, const Int max, const float speed, const float fastSpeed) {
    return inputNumbers<Int, 4>(*this, name, {min, max, speed, fastSpeed}, ImGuiSliderFlags_None);
}

}
