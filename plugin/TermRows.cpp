#include "TermRows.h"

#include <algorithm>
#include <cmath>

#include <Corrade/Containers/GrowableArray.h>
#include <imgui.h>
#include <rapidjson/document.h>

#include "ImGuiText.h"
#include "QuorvaneEditor/ProjectFile.h"
#include "QuorvaneEditor/Utils.h"
#include "QuorvaneEditor/ValueAccess.h"
#include "Utils/StrHash.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

/* How far behind the row that was expected next a row of the last model is looked for. Further on, measuring again is as fast. */
constexpr std::size_t ReuseDistance = 16;

bool canBeLabel(const Containers::StringView key) {
    return !key.isEmpty() && key.size() < TermRows::LongText && !key.contains("##"_s) && !key.contains('\0');
}

bool isBlank(const char character) { return character == ' ' || character == '\t'; }

}

TermRows::TermRows() = default;
TermRows::~TermRows() = default;

Containers::StringView TermRows::view(const Slice slice) const {
    return {_buffer.data() + slice.offset, slice.size, Containers::StringViewFlag::NullTerminated};
}

Containers::StringView TermRows::key(const std::size_t row) const { return view(_rows[row].key); }
Containers::StringView TermRows::token(const std::size_t row) const { return view(_rows[row].token); }
Containers::StringView TermRows::text(const std::size_t row) const { return view(_rows[row].text); }

std::size_t TermRows::find(const Containers::StringView token) const {
    std::size_t row = 0;
    while(row != size() && this->token(row) != token) ++row;
    return row;
}

Containers::ArrayView<const UnsignedInt> TermRows::lineStarts(const std::size_t row) const {
    const Slice lines = _rows[row].lines;
    return Containers::ArrayView<const UnsignedInt>{_lineStarts.data() + lines.offset, lines.size};
}

TermRows::Slice TermRows::store(const Containers::StringView text) {
    const Slice slice{UnsignedInt(_buffer.size()), UnsignedInt(text.size())};
    Containers::arrayAppend(_buffer, Containers::ArrayView<const char>{text.data(), text.size()});
    Containers::arrayAppend(_buffer, '\0');
    return slice;
}

TermRows::Slice TermRows::storeToken(const Slice key) {
    if(!view(key).contains('~') && !view(key).contains('/')) return key;

    const auto offset = UnsignedInt(_buffer.size());
    for(UnsignedInt i = 0; i != key.size; ++i) {
        const char character = _buffer[key.offset + i];
        const bool escaped = character == '~' || character == '/';
        Containers::arrayAppend(_buffer, escaped ? '~' : character);
        if(escaped) Containers::arrayAppend(_buffer, character == '~' ? '0' : '1');
    }
    const UnsignedInt size = UnsignedInt(_buffer.size()) - offset;
    Containers::arrayAppend(_buffer, '\0');
    return {offset, size};
}

void TermRows::append(const Containers::StringView key, const Containers::StringView text, const bool translatable) {
    Row row{};
    row.key = store(key);
    row.token = storeToken(row.key);
    row.text = store(text);
    row.naturalWidth = -1.0f;
    row.id = int(StrHash{}(key));
    row.isLabel = canBeLabel(key);
    row.translatable = translatable;
    Containers::arrayAppend(_rows, row);
}

void TermRows::rebuild(ProjectFile& project, const Containers::StringView search) {
    const Containers::Array<char> lastBuffer = std::move(_buffer);
    const Containers::Array<Row> lastRows = std::move(_rows);
    _buffer = {};
    _rows = {};
    _laidOut = false;

    const ValueAccess root = project.root();
    const ValueAccess terms = root.member("localization"_s).member("terms"_s);
    if(!terms.isObject()) return;
    Containers::arrayReserve(_buffer, lastBuffer.size());
    Containers::arrayReserve(_rows, search.isEmpty() ? terms.size() : lastRows.size());

    const auto wasAlike = [&lastBuffer](const Row& last, const Containers::StringView key, const auto text) {
        return Containers::StringView{lastBuffer.data() + last.key.offset, last.key.size} == key &&
            Containers::StringView{lastBuffer.data() + last.text.offset, last.text.size} == text;
    };
    std::size_t expected = 0;
    for(auto& member: terms.value()->GetObject()) {
        const ValueAccess term{project, &member.value};
        const Containers::StringView key{member.name.GetString(), member.name.GetStringLength()};
        const Containers::StringView sourceText = term.member("sourceText"_s).asString();
        if(Utils::caseInsensitiveSearch(key, search) == -1 && Utils::caseInsensitiveSearch(sourceText, search) == -1)
            continue;

        const Containers::StringView text = root[sourceText].asString();
        append(key, text, term.member("translatable"_s).asBool());
        const std::size_t searched = std::min(expected + ReuseDistance, lastRows.size());
        for(std::size_t i = expected; i != searched; ++i) {
            if(!wasAlike(lastRows[i], key, text)) continue;
            _rows.back().naturalWidth = lastRows[i].naturalWidth;
            _rows.back().naturalHeight = lastRows[i].naturalHeight;
            _rows.back().wrappedHeight = lastRows[i].wrappedHeight;
            expected = i + 1;
            break;
        }
    }
}

void TermRows::measure(Row& row) {
    const Containers::StringView text = view(row.text);
    if(row.naturalWidth < 0.0f) {
        const ImVec2 size = calcTextSize(text);
        row.naturalWidth = size.x;
        row.naturalHeight = size.y;
    }
    /* A pixel of doubt, because the library adds widths up in another order where it wraps */
    const bool wraps = row.naturalWidth + 1.0f > _geometry.wrapWidth;
    row.wrappedHeight = wraps ? calcTextSize(text, false, _geometry.wrapWidth).y : row.naturalHeight;
}

void TermRows::breakLongText(Row& row) {
    row.lines = {UnsignedInt(_lineStarts.size()), 0};
    const Containers::StringView text = view(row.text);
    if(text.size() < LongText) return;

    for(std::size_t start = 0; start < text.size();) {
        Containers::arrayAppend(_lineStarts, UnsignedInt(start));
        start += calcLineEnd(text.exceptPrefix(start), _geometry.wrapWidth);
        /* The library hangs the blanks at which it breaks over the end of the line */
        while(start < text.size() && isBlank(text[start])) ++start;
        if(start < text.size() && text[start] == '\n') ++start;
    }
    row.lines.size = UnsignedInt(_lineStarts.size()) - row.lines.offset;
}

bool TermRows::fontChanged() {
    const void* const font = ImGui::GetFont();
    const void* const baked = ImGui::GetFontBaked();
    const float size = ImGui::GetFontSize();
    if(_font == font && _fontBaked == baked && _fontSize == size) return false;
    _font = font;
    _fontBaked = baked;
    _fontSize = size;
    return true;
}

void TermRows::layOut(const Geometry& geometry) {
    const bool remeasure = fontChanged();
    const bool rewrap = remeasure || _geometry.wrapWidth != geometry.wrapWidth;
    if(_laidOut && !rewrap && _geometry == geometry) return;

    _geometry = geometry;
    _laidOut = true;
    Containers::arrayResize(_tops, Corrade::NoInit, _rows.size() + 1);
    Containers::arrayResize(_lineStarts, Corrade::NoInit, 0);
    float top = 0.0f;
    for(std::size_t i = 0; i != _rows.size(); ++i) {
        Row& row = _rows[i];
        if(remeasure) row.naturalWidth = -1.0f;
        if(rewrap || row.naturalWidth < 0.0f) measure(row);
        breakLongText(row);
        _tops[i] = top;
        float height = std::max(row.naturalHeight, row.wrappedHeight);
        if(row.key.size) height = std::max(height, geometry.boxHeight);
        top = std::trunc(top + geometry.padding + height + geometry.spacing) - geometry.spacing + geometry.padding;
    }
    _tops[_rows.size()] = top;
}

TermRows::Range TermRows::rowsBetween(const float from, const float to) const {
    if(_rows.isEmpty()) return {0, 0};
    const float* const tops = _tops.data();
    const float* const end = tops + _rows.size();
    const float* const begun = std::upper_bound(tops, end, from);
    const std::size_t begin = begun == tops ? 0 : std::size_t(begun - tops) - 1;
    return {begin, std::max(std::size_t(std::lower_bound(tops, end, to) - tops), begin + 1)};
}

}
