#pragma once

#include <Corrade/Containers/StringView.h>
#include <imgui.h>

#include "ImGuiText.h"
#include "QuorvaneEditor/Host.h"

/** @file
    What Dear ImGui wants closed is closed by a guard, in the order in which it was opened. */

namespace QuorvaneEngine {

/** Closes what a function of the library began: `if(MenuGuard menu{ImGui::BeginMenu(...)})`.
    @tparam end     what closes it
    @tparam always  whether the library wants it closed where it was begun in vain, too */
template <void (*end)(), bool always> class BeginGuard {
public:
    /** @param begun    what the library returned */
    explicit BeginGuard(bool begun): _begun{begun} {}
    ~BeginGuard() {
        if(always || _begun) end();
    }

    BeginGuard(const BeginGuard&) = delete;
    BeginGuard& operator=(const BeginGuard&) = delete;

    explicit operator bool() const { return _begun; }

private:
    bool _begun;
};

using WindowGuard = BeginGuard<ImGui::End, true>;
using ChildGuard = BeginGuard<ImGui::EndChild, true>;
using MenuBarGuard = BeginGuard<ImGui::EndMenuBar, false>;
using MainMenuBarGuard = BeginGuard<ImGui::EndMainMenuBar, false>;
using MenuGuard = BeginGuard<ImGui::EndMenu, false>;
using TabBarGuard = BeginGuard<ImGui::EndTabBar, false>;
using TabItemGuard = BeginGuard<ImGui::EndTabItem, false>;
using TableGuard = BeginGuard<ImGui::EndTable, false>;

/** For plain popups, modal ones and context menus. */
using PopupGuard = BeginGuard<ImGui::EndPopup, false>;
using ComboGuard = BeginGuard<ImGui::EndCombo, false>;
using TooltipGuard = BeginGuard<ImGui::EndTooltip, false>;

/** Opens a pair that has no result. */
template <void (*begin)(), void (*end)()> class PairGuard {
public:
    PairGuard() { begin(); }
    ~PairGuard() { end(); }

    PairGuard(const PairGuard&) = delete;
    PairGuard& operator=(const PairGuard&) = delete;
};

using GroupGuard = PairGuard<ImGui::BeginGroup, ImGui::EndGroup>;

class DisabledGuard {
public:
    explicit DisabledGuard(bool disabled = true) { ImGui::BeginDisabled(disabled); }
    ~DisabledGuard() { ImGui::EndDisabled(); }

    DisabledGuard(const DisabledGuard&) = delete;
    DisabledGuard& operator=(const DisabledGuard&) = delete;
};

/** Wraps texts. */
class TextWrapGuard {
public:
    /** @param x    where lines end, in pixels from the window's left edge; 0 is its right edge or that of the table's cell */
    explicit TextWrapGuard(float x) { ImGui::PushTextWrapPos(x); }
    ~TextWrapGuard() { ImGui::PopTextWrapPos(); }

    TextWrapGuard(const TextWrapGuard&) = delete;
    TextWrapGuard& operator=(const TextWrapGuard&) = delete;
};

/** Lets nothing show outside of a rectangle, nor of those that are in force already. */
class ClipRectGuard {
public:
    explicit ClipRectGuard(const ImVec2& min, const ImVec2& max) { ImGui::PushClipRect(min, max, true); }
    ~ClipRectGuard() { ImGui::PopClipRect(); }

    ClipRectGuard(const ClipRectGuard&) = delete;
    ClipRectGuard& operator=(const ClipRectGuard&) = delete;
};

/** An entry of the ID stack. */
class IdGuard {
public:
    /** An empty text opens no entry. */
    explicit IdGuard(Containers::StringView id): _pushed{!id.isEmpty()} {
        if(_pushed) pushId(id);
    }
    explicit IdGuard(int id): _pushed{true} { ImGui::PushID(id); }
    ~IdGuard() {
        if(_pushed) ImGui::PopID();
    }

    IdGuard(const IdGuard&) = delete;
    IdGuard& operator=(const IdGuard&) = delete;

private:
    bool _pushed;
};

/** Any number of style values that end together. */
class StyleGuard {
public:
    StyleGuard() = default;
    ~StyleGuard() {
        ImGui::PopStyleVar(_variables);
        ImGui::PopStyleColor(_colors);
    }

    StyleGuard(const StyleGuard&) = delete;
    StyleGuard& operator=(const StyleGuard&) = delete;

    StyleGuard& color(ImGuiCol slot, const ImVec4& value) {
        ImGui::PushStyleColor(slot, value);
        ++_colors;
        return *this;
    }

    /** In pixels. */
    StyleGuard& variable(ImGuiStyleVar slot, float value) {
        ImGui::PushStyleVar(slot, value);
        ++_variables;
        return *this;
    }

    /** In pixels. */
    StyleGuard& variable(ImGuiStyleVar slot, const ImVec2& value) {
        ImGui::PushStyleVar(slot, value);
        ++_variables;
        return *this;
    }

private:
    int _colors = 0;
    int _variables = 0;
};

}
