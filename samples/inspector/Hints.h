#pragma once

#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/StringView.h>
#include <QuorvaneEditor/Host.h>

namespace InspectorPlugin {

using namespace QuorvaneEngine;

/** What a value is edited with. */
enum class Widget {
    /** Nothing: it is shown as text. */
    None,

    /** What the value holds is shown below it, when it is unfolded. */
    Section,

    Checkbox,
    Integer,
    Number,
    Integers,
    Numbers,
    Color,
    Line,
    Lines,
    List,

    /** These need a hint: the type alone does not tell. */
    Choice,
    Resource,
    File,
    Bits,
    Flags,
};

/** What is known of members by their name. */
struct Hint {
    /** The name, or "*" and the end of it. */
    Containers::StringView member;

    /** Counts where it goes with the type that the value has. */
    Widget widget;

    /** Of numbers; without limits where @ref max is not above @ref min . */
    float min = 0.0f;
    float max = 0.0f;

    /** What a drag over a pixel adds; 0 for what the widget thinks best. */
    float speed = 0.0f;

    /** The collection of @ref Widget::Resource , for arrays of IDs as well. */
    Containers::StringView collection = {};

    /** The values of @ref Widget::Choice , the bits of @ref Widget::Flags by name. */
    Containers::ArrayView<const Containers::StringView> names = {};

    /** Shown beside the label. */
    Containers::StringView unit = {};
};

/** The first hint for a member, null where there is none. */
const Hint* hintFor(Containers::StringView member);

/** What a value is edited with, by its type and by the hint for its member. */
Widget widgetFor(const rapidjson::Value& value, const Hint* hint);

}
