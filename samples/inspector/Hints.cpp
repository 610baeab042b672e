#include "Hints.h"

#include <algorithm>

#include <rapidjson/document.h>

namespace InspectorPlugin {

using namespace Containers::Literals;

namespace {

constexpr Containers::StringView AlphaModes[]{"opaque"_s, "mask"_s, "blend"_s};
constexpr Containers::StringView Blending[]{
    "zero"_s, "one"_s, "sourceAlpha"_s, "oneMinusSourceAlpha"_s, "destinationAlpha"_s, "oneMinusDestinationAlpha"_s};
constexpr Containers::StringView CullModes[]{"none"_s, "front"_s, "back"_s};
constexpr Containers::StringView DepthTests[]{
    "never"_s, "less"_s, "equal"_s, "lessOrEqual"_s, "greater"_s, "notEqual"_s, "greaterOrEqual"_s, "always"_s};
constexpr Containers::StringView Filters[]{"nearest"_s, "linear"_s};
constexpr Containers::StringView Interpolations[]{"constant"_s, "linear"_s, "spherical"_s};
constexpr Containers::StringView Kinds[]{"animal"_s, "character"_s, "dialog"_s, "item"_s, "machine"_s, "overlay"_s,
    "place"_s, "quest"_s, "screen"_s, "script"_s};
constexpr Containers::StringView Mipmaps[]{"base"_s, "nearest"_s, "linear"_s};
constexpr Containers::StringView Models[]{"flat"_s, "unlit"_s, "phong"_s};
constexpr Containers::StringView Moods[]{"bright"_s, "curious"_s, "dry"_s};
constexpr Containers::StringView Qualities[]{"low"_s, "medium"_s, "high"_s};
constexpr Containers::StringView Severities[]{"note"_s, "warning"_s, "error"_s};

constexpr Containers::StringView Channels[]{"Red"_s, "Green"_s, "Blue"_s, "Alpha"_s};

constexpr Hint choice(
    const Containers::StringView member, const Containers::ArrayView<const Containers::StringView> names) {
    return {.member = member, .widget = Widget::Choice, .names = names};
}

constexpr Hint reference(const Containers::StringView member, const Containers::StringView collection) {
    return {.member = member, .widget = Widget::Resource, .collection = collection};
}

constexpr Hint number(const Containers::StringView member, const float min, const float max, const float speed,
    const Containers::StringView unit = {}) {
    return {.member = member, .widget = Widget::Number, .min = min, .max = max, .speed = speed, .unit = unit};
}

constexpr float Large = 1.0e6f;

constexpr Hint Hints[]{
    {"color"_s, Widget::Color},
    {"ambience"_s, Widget::Color},
    {"ambient"_s, Widget::Color},
    {"*Color"_s, Widget::Color},
    {"*Tint"_s, Widget::Color},

    reference("animation"_s, "animations"_s),
    reference("background"_s, "textures"_s),
    reference("exits"_s, "objects"_s),
    reference("fallbacks"_s, "fonts"_s),
    reference("font"_s, "fonts"_s),
    reference("image"_s, "images"_s),
    reference("keyItem"_s, "objects"_s),
    reference("lens"_s, "objects"_s),
    reference("material"_s, "materials"_s),
    reference("mesh"_s, "meshes"_s),
    reference("opens"_s, "objects"_s),
    reference("pointsTo"_s, "objects"_s),
    reference("sells"_s, "objects"_s),
    reference("shader"_s, "shaders"_s),
    reference("skin"_s, "skins"_s),
    reference("startObject"_s, "objects"_s),
    reference("target"_s, "objects"_s),
    reference("texture"_s, "textures"_s),

    choice("alphaMode"_s, AlphaModes),
    choice("cullMode"_s, CullModes),
    choice("depthTest"_s, DepthTests),
    choice("destination"_s, Blending),
    choice("interpolation"_s, Interpolations),
    choice("kind"_s, Kinds),
    choice("magnification"_s, Filters),
    choice("minification"_s, Filters),
    choice("mipmap"_s, Mipmaps),
    choice("model"_s, Models),
    choice("mood"_s, Moods),
    choice("severity"_s, Severities),
    choice("shadowQuality"_s, Qualities),
    choice("source"_s, Blending),

    {"layers"_s, Widget::Bits},
    {"features"_s, Widget::Bits},
    {"scripts"_s, Widget::Bits},
    {.member = "colorMask"_s, .widget = Widget::Flags, .names = Channels},

    number("age"_s, 0.0f, 150.0f, 0.2f, "years"_s),
    number("angleDegrees"_s, 0.0f, 180.0f, 0.25f, "°"_s),
    number("dampness"_s, 0.0f, 1.0f, 0.002f),
    number("density"_s, 0.0f, 1.0f, 0.002f),
    number("duration"_s, 0.0f, Large, 0.01f, "s"_s),
    number("gravity"_s, 0.0f, 0.0f, 0.01f, "m/s²"_s),
    number("lightLevel"_s, 0.0f, 1.0f, 0.002f),
    number("opacity"_s, 0.0f, 1.0f, 0.002f),
    number("pixelSize"_s, 1.0f, 512.0f, 0.2f, "px"_s),
    number("rotation"_s, -1.0f, 1.0f, 0.002f),
    number("scaling"_s, 0.0f, 0.0f, 0.005f),
    number("shininess"_s, 0.0f, 1024.0f, 0.5f),
    number("translation"_s, 0.0f, 0.0f, 0.01f, "m"_s),
    number("walkSpeed"_s, 0.0f, 20.0f, 0.01f, "m/s"_s),
    number("weight"_s, 0.0f, Large, 0.01f, "kg"_s),
    number("windowSize"_s, 1.0f, 16384.0f, 1.0f, "px"_s),
    number("*Degrees"_s, -360.0f, 360.0f, 0.25f, "°"_s),
    number("*Exposure"_s, 0.0f, 1.0f, 0.002f),
    number("*Metres"_s, 0.0f, 0.0f, 0.01f, "m"_s),
    number("*Range"_s, 0.0f, Large, 0.02f, "m"_s),
    number("*Seconds"_s, 0.0f, Large, 0.01f, "s"_s),
    number("*Speed"_s, 0.0f, 0.0f, 0.01f),

    {"*File"_s, Widget::File},
    {"description"_s, Widget::Lines},
    {"text"_s, Widget::Lines},
};

/** From this size in bytes on a text does not fit on a line. */
constexpr std::size_t LongText = 48;

/** Whether all elements of a filled array are of a type. */
template <class Is> bool all(const rapidjson::Value& array, const Is is) {
    return !array.Empty() && std::all_of(array.Begin(), array.End(), is);
}

Widget numberWidget(const rapidjson::Value& value, const Hint* const hint) {
    // The widgets hold 32 bits: a larger number would come out of an edit as another one.
    if(value.IsDouble()) return Widget::Number;
    if(!value.IsInt()) return Widget::None;
    const bool isBits = hint && (hint->widget == Widget::Bits || hint->widget == Widget::Flags);
    return isBits ? hint->widget : Widget::Integer;
}

Widget textWidget(const rapidjson::Value& value, const Hint* const hint) {
    const Containers::StringView text{value.GetString(), value.GetStringLength()};
    // The GUI library's texts end there.
    if(text.contains('\0')) return Widget::None;
    for(const Widget widget: {Widget::Choice, Widget::Resource, Widget::File, Widget::Lines})
        if(hint && hint->widget == widget) return widget;
    return text.contains('\n') || text.size() > LongText ? Widget::Lines : Widget::Line;
}

Widget arrayWidget(const rapidjson::Value& value, const Hint* const hint) {
    const rapidjson::SizeType size = value.Size();
    if(all(value, [](const rapidjson::Value& element) { return element.IsString(); })) return Widget::List;
    if(size < 2 || size > 4) return Widget::Section;
    if(hint && hint->widget == Widget::Color && size > 2 &&
        all(value, [](const rapidjson::Value& element) { return element.IsNumber(); }))
        return Widget::Color;
    if(all(value, [](const rapidjson::Value& element) { return element.IsInt(); })) return Widget::Integers;
    const bool isNumbers =
        all(value, [](const rapidjson::Value& element) { return element.IsDouble() || element.IsInt(); });
    return isNumbers ? Widget::Numbers : Widget::Section;
}

}

const Hint* hintFor(const Containers::StringView member) {
    const Hint* const found = std::find_if(std::begin(Hints), std::end(Hints), [member](const Hint& hint) {
        return hint.member.hasPrefix('*') ? member.hasSuffix(hint.member.exceptPrefix(1)) : member == hint.member;
    });
    return found == std::end(Hints) ? nullptr : found;
}

Widget widgetFor(const rapidjson::Value& value, const Hint* const hint) {
    if(value.IsBool()) return Widget::Checkbox;
    if(value.IsNumber()) return numberWidget(value, hint);
    if(value.IsString()) return textWidget(value, hint);
    if(value.IsNull()) return hint && hint->widget == Widget::Resource ? Widget::Resource : Widget::None;
    if(value.IsArray()) return value.Empty() ? Widget::None : arrayWidget(value, hint);
    return value.ObjectEmpty() ? Widget::None : Widget::Section;
}

}
