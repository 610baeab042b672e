#pragma once

#include <vector>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/EnumSet.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"
#include "Utils/Function.h"

struct ImGuiInputTextCallbackData;
struct ImVec2;

namespace QuorvaneEngine {

class Scope;

/** Widgets that are bound to values of the project document.

    A widget is not handed a pointer to the value that it edits but a name, which is appended to the current scope path, a JSON
    Pointer (RFC 6901) into the document. Views push scopes while they descend; the same segments stand on the GUI library's ID
    stack, so two widgets for two values never collide. One object serves all views of an editor, one after another, on the GUI
    thread. Fixed distances are pixels at scale 1 and follow the GUI's font scale. */
class Ui {
public:
    enum class Flag : UnsignedInt {
        /** Value widgets draw no label column and take the full width. */
        NoLabel = 1
    };
    using Flags = Containers::EnumSet<Flag>;

    enum class ButtonFlag : UnsignedInt {
        /** First button of a group: the left corners are rounded. */
        GroupStart = 1,
        /** Last button of a group: the right corners are rounded. */
        GroupEnd = 2
    };
    using ButtonFlags = Containers::EnumSet<ButtonFlag>;

    enum class SearchFlag : UnsignedInt {
        /** An entry matches when its key contains the search text. */
        Keys = 1,
        /** An entry matches when its value, a string, contains the search text. */
        Values = 2,
        /** A value that begins with "/" and is the path of an existing value stands for the string there, one level deep. */
        FollowReferences = 4
    };
    using SearchFlags = Containers::EnumSet<SearchFlag>;

    /** @param project      the document that value widgets read; may be bound later through the members
        @param changes      where they push their edits
        @param editorData   must outlive this object, as must the others */
    explicit Ui(ProjectFile* project = nullptr, ChangeManager* changes = nullptr, EditorData* editorData = nullptr);
    ~Ui();
    Ui(const Ui&) = delete;
    Ui& operator=(const Ui&) = delete;

    /** @{ @name Scopes, flags and value binding */

    /** Opens a scope level for each non-empty part of @p name between "/", of which there must be one. Keys of the document that
        hold "/" or "~" are escaped by the caller, by `escaped()` of `PathParts.h`: so are IDs, as a search finds
        them. One that holds a zero byte cannot be reached: the scope path ends there.
        @param id   receives the GUI id of the last part; may be null */
    void pushScope(Containers::StringView name, unsigned* id);

    /** Opens a scope level for an element of an array. */
    void pushScope(unsigned long index, unsigned* id);

    /** Closes one level. An empty path is a broken precondition. */
    void popScope();

    /** The current scope path, empty when no scope is open. Valid until the next push. */
    Containers::StringView scopePath() const;

    /** Adds flags until the matching @ref popFlags() . An inner push cannot clear what an outer one set. */
    void pushFlags(Flags added);

    /** Takes the flags of the matching @ref pushFlags() back. An empty stack is a broken precondition that is not checked. */
    void popFlags();

    /** Whether the command modifier, the physical Cmd or Super key, is held: the GUI library swaps it with Ctrl on macOS. */
    static bool shortcutKeyPressed();

    /** Whether the key that shows the path of the value under the mouse, the physical Ctrl key, is held. */
    static bool pathKeyPressed();

    /** @} */

    /** @{ @name Basic widgets

        Labels are those of the GUI library: what follows "##" is hidden, the whole text is the ID. */

    /** Pixels of a distance that is @p pixels at scale 1. */
    static float scaled(float pixels);

    /** Text that is vertically centred in a row of frame height. */
    static void alignedText(Containers::StringView text);

    /** @ref alignedText() , and the line goes on at 33 % of the available width or, where that would cover the label, behind it. */
    static void label(Containers::StringView text);

    /** @ref label() of a widget that edits a value, unless @ref Flag::NoLabel is in force. The next item fills the line. */
    void valueLabel(Containers::StringView name) const;

    /** Goes on with the line at @p x from its start, in pixels, or behind the last item where that would cover it. */
    static void sameLineAt(float x);

    /** Shows the string that the project holds at the scope path and @p name , without defaults: what is missing and what is no
        string shows nothing. */
    void text(Containers::StringView name);

    /** A button with an icon. An empty @p id pushes no ID. Returns whether it was pressed. */
    static bool iconButton(Containers::StringView icon, Containers::StringView id);

    /** A button that joins its neighbours into one group. An empty @p id pushes no ID. Returns whether it was pressed. */
    static bool buttonGrouped(Containers::StringView label, Containers::StringView id, ButtonFlags flags);

    /** A text input behind a magnifying glass.
        @param id           what tells it from others, NUL-terminated
        @param buffer       the text, NUL-terminated; its size is the capacity, at least 1, which does not grow
        @param width        of icon and input, in pixels, without the style's `ItemSpacing.x` that is between them: one that fills the line
            is given what is left of it less that. With @p inputStart the input ends at that and @p width , less the width of the icon.
        @param offset       added to the cursor position, in pixels
        @param inputStart   where the input begins, in pixels from the line's start; 0 is right behind the icon
        @param focus        empties the text and takes the keyboard in every frame in which no item is active
        @return whether the text changed */
    static bool searchBar(Containers::StringView id, Containers::Array<char>& buffer, float width, const ImVec2& offset,
        float inputStart, bool focus);

    /** Lets a text input whose user data is a `Containers::Array<char>` grow it. For the resize callback; returns 0. */
    static int textResizeCallback(ImGuiInputTextCallbackData* data);

    /** A check box in the editor's colours. Returns whether it was toggled. */
    static bool checkbox(Containers::StringView label, bool* value);

    /** Height of @ref checkbox() in pixels. */
    static float checkboxHeight();

    /** Returns whether it was clicked. */
    static bool radioButton(Containers::StringView label, bool active);

    /** @} */

    /** @{ @name Value inputs

        Each edits the value at the scope path and its name through the change manager, and returns whether it changed it in this
        frame. What has a label shows the name unless @ref Flag::NoLabel is in force. A value that is missing or of another type
        counts as 0, `false` or an empty text, and an edit replaces it.

        Edits of one value by numbers, colours and texts merge into one step of undo: those of a drag, those of several drags, and a text
        that is committed after another one, also where other values were edited in between, up to the last group of changes. Those of
        check boxes and of @ref inputEnum() are steps of their own. The first change of the log never merges, see
        @ref ChangeManager::pushChange() : where a drag is the first edit of all, it is two steps. */

    /** A number that is dragged, or typed.
        @param min          lowest value that a drag comes to; there are no limits where it is greater than @p max or both are 0
        @param speed        change per pixel
        @param fastSpeed    change per pixel while the command modifier is held */
    bool inputFloat(Containers::StringView name, float min, float max, float speed, float fastSpeed);

    /** Elements of an array, of which all are written as doubles and those behind them are dropped. */
    bool inputFloat2(Containers::StringView name, float min, float max, float speed, float fastSpeed);
    bool inputFloat3(Containers::StringView name, float min, float max, float speed, float fastSpeed);
    bool inputFloat4(Containers::StringView name, float min, float max, float speed, float fastSpeed);

    /** An integer. What is typed is clamped, too, and two limits of 0 leave 0 alone. */
    bool inputInt(Containers::StringView name, Int min, Int max, float speed, float fastSpeed);

    /** Integers of an array. What is typed is not clamped. */
    bool inputInt2(Containers::StringView name, Int min, Int max, float speed, float fastSpeed);
    bool inputInt3(Containers::StringView name, Int min, Int max, float speed, float fastSpeed);
    bool inputInt4(Containers::StringView name, Int min, Int max, float speed, float fastSpeed);

    /** An array of red, green and blue from 0 to 1. What is typed may lie beyond, up to 1,000,000 and down to the same below 0, which
        is what any farther component counts as. */
    bool colorEdit3(Containers::StringView name);

    /** An array of red, green, blue and alpha, as for @ref colorEdit3() . One of less than four elements, any other value and none are
        a broken precondition. */
    bool colorEdit4(Containers::StringView name);

    /** A boolean. The name is the label of the box and stands behind it. */
    bool checkbox(Containers::StringView name);

    /** A boolean, without a label. */
    bool checkboxUnlabled(Containers::StringView name);

    /** A bit of an integer, of which one of 64 bits keeps its upper half. One of 32 bits is written with a sign.
        @param bit      modulo 32
        @param label    of the box; empty for the bit's number */
    bool checkboxBit(Containers::StringView name, int bit, Containers::StringView label);

    /** The lowest bits of an integer, as for @ref checkboxBit() , four in a row. Two that are toggled in one frame are one change.
        @param names    of the boxes, of which there are 8, or none for the bits' numbers; others are a broken precondition */
    bool checkboxBits(
        Containers::StringView name, int count, Containers::ArrayView<const Containers::StringView> names);

    /** A text that is one of several, chosen from a drop-down. One that is none of them is shown as it is. Who chooses what is there
        already makes a change, too.
        @param values   in the order of the drop-down */
    bool inputEnum(Containers::StringView name, const Containers::StringIterable& values);

    /** A line of text. It becomes a change, if it is another text then, when the input loses the keyboard; who leaves with Escape
        keeps the old one. Where the input is not drawn in that frame, what was typed is lost. Where nothing
        but the value itself changed meanwhile, it stays. Of a text with a zero byte, what stands before it is shown, and all that an edit
        keeps; so it is in all inputs of text.
        @return whether the text in the input changed, which is not yet a change of the value */
    bool inputText(Containers::StringView name);

    /** Lines of text that fill the available region, otherwise as @ref inputText() . Where a window scrolls, or little of it is left, that
        may be a few pixels: a child window around it gives it a height.
        @param absolute         whether the name is itself the JSON Pointer of the value, also for copying and pasting; it is opened as a
            scope all the same
        @param returnOnCommit   whether to return, instead, whether the value changed */
    bool inputTextMultiline(Containers::StringView name, bool absolute, bool returnOnCommit);

    /** A text that a double-click turns into an input. Enter and a click of the left button elsewhere accept what was typed, as a
        change if it is another text: who only looks must not lose what could be redone. Escape and a click of the right button elsewhere
        do not. In between the input keeps the keyboard, also from the tab key. What was clicked instead keeps its click: at the end the
        input makes itself inactive, and nothing else.
        @param absolute     as for @ref inputTextMultiline()
        @return whether a text was accepted, be it the same */
    bool renameable(Containers::StringView name, bool absolute);

    /** @} */

    /** @{ @name Value clipboard

        Values go to the clipboard as JSON text. Numbers, colours, @ref inputEnum() , @ref inputText() , @ref inputTextMultiline() ,
        @ref fileSelect() and the pickers of resources have it; check boxes, @ref renameable() and @ref stringList() do not. All belong into the scope of a value. */

    /** Lets the last item copy and paste the value at the scope path: by a menu that the right button opens, and by the command
        modifier with C and V while the mouse is over it and it is not being edited. Who opens the menu leaves the item, which then
        records what was typed. */
    void valueContextMenu();

    /** Puts the value at the scope path on the clipboard, `null` where there is none. */
    void copyValue();

    /** Replaces the value at the scope path by that on the clipboard, as one change, or prints a warning and changes nothing: the
        text has to be JSON that the project's files can hold, of the type that is there already, where `true` and `false` are two types
        and all numbers one, and an array of the same size. What files cannot hold is text that is not UTF-8, lone surrogates, a key
        twice in one object, and containers that lie deeper and numbers that are longer than in files. So nothing can be pasted where no
        value is, and no ID where a picker holds `null`. Elements of arrays and members of objects may be of any type. An equal value is a
        change, too. */
    void pasteValue();

    /** @} */

    /** @{ @name Resources

        Resources are entries of the project's collections, each below its ID and with a "name". One that is dragged is a payload
        of the GUI library, whose type belongs to the collection and whose bytes are the ID, without a zero byte behind it. */

    /** The payload type of a collection, NUL-terminated and static. A collection whose resources cannot be dragged is a broken
        precondition. */
    static Containers::StringView resourceToDragDropType(Containers::StringView type);

    /** Makes the last item, which has an ID, a drag source for a resource.
        @param type     the collection
        @param id       copied
        @param label    what is shown beside the mouse
        @return whether a drag from it is in progress */
    static bool resourceDragDropSource(
        Containers::StringView type, Containers::StringView id, Containers::StringView label);

    /** Makes the last item a drop target for the resources of a collection.
        @param id   what was dropped, in the frame in which it is: its bytes as they came, whether there is such a resource or not.
            Valid until the next drop.
        @return whether something was dropped */
    bool acceptDragDropResources(Containers::StringView type, Containers::StringView& id);

    /** Makes the current window a drop target, all of it but a margin. Where it succeeds, the caller accepts payloads and ends the
        target as one of the GUI library's own. */
    static bool beginDragDropTargetWindow();

    /** Whether the entry of a resource is offered. An empty one offers all. */
    using ResourceFilter = Function<bool(ValueAccess& entry)>;

    /** A value that refers to a resource of a collection, or is null. Shows the resource's name; a click opens a list of all resources
        to choose from and to search by name. Takes resources that are dragged there, which the filter does not hold back; an ID that is
        not UTF-8 prints a warning and changes nothing.

        The list lies under the field, down to the end of the main window, or above it where there is room for a few lines alone. The
        keyboard opens it, too. A row with a picture is 64 pixels high at scale 1 and begins with it, as a square; the name stands behind
        it, in the middle of the height. Who chooses what is there already makes a change, too.

        The list holds what the filter offers, in document order, with their pictures for textures, materials and meshes. It is made
        when it opens, when its search text changes and when the project does, and the filter is asked then alone. A resource without
        a name is listed under its ID, and not where the value is a name. A value that refers to no resource, or is neither null nor
        a string, has a sign beside it that says so. For "objects" there is a button that is the host's to handle, see
        @ref EditorData::pickObject .
        @param type     the collection, whose resources can be dragged
        @param byName   whether the value holds the resource's name and not its ID
        @return whether a change was pushed in this frame */
    bool selectResource(
        Containers::StringView label, Containers::StringView type, bool byName, ResourceFilter filter = nullptr);

    /** Of the collection of a manager. */
    bool selectResource(Containers::StringView label, const AbstractResourceManager& manager, bool byName,
        ResourceFilter filter = nullptr);

    /** By name. */
    bool selectResourceName(
        Containers::StringView label, const AbstractResourceManager& manager, ResourceFilter filter = nullptr);
    bool selectResourceName(Containers::StringView label, Containers::StringView type, ResourceFilter filter = nullptr);

    /** Offers all objects. */
    bool selectObjectResource(Containers::StringView label, const ObjectResourceManager& manager, bool byName);

    /** @} */

    /** @{ @name Files */

    /** The path of a file, typed or chosen in the desktop's own dialog, which a button opens. What is typed becomes a change as in
        @ref inputText() , what is chosen at once; one after the other they merge. A path in the project's folder is stored relative to
        it, any other as it is: chosen ones are absolute then. The same path in another form is no change. The dialog starts at the present
        path, or in the project's folder. A chosen file whose name is not UTF-8 or has a line break prints a warning and changes
        nothing. A value that is no string counts as empty.
        @param title    of the dialog
        @param filters  pairs of a description and a pattern, such as "Pictures", "*.png"
        @return whether a change was pushed in this frame */
    bool fileSelect(Containers::StringView name, Containers::StringView title,
        Containers::ArrayView<const Containers::StringView> filters);

    /** @} */

    /** @{ @name Search and lists */

    /** Searches a collection by a text that each entry has, without regard to case.
        @param collection   a member of the project's root or the path of a value; one that does not exist, or is no object, has no
            entries
        @param field        the key of the text in an entry; where there is none it counts as empty
        @param search       the text up to its first zero byte; an empty one finds all entries
        @param results      emptied first; the IDs of the entries that were found, in document order. They view the document, so they are valid
            until the next change. */
    void performResourceSearch(Containers::StringView collection, Containers::StringView field,
        const Containers::Array<char>& search, Containers::Array<Containers::StringView>& results) const;

    /** Searches a collection whose entries are strings, by key, by value or by both. Any other value counts as an empty string.
        Parameters as in @ref performResourceSearch(); an empty text finds all entries whatever the flags are. */
    void performSearch(Containers::StringView collection, const Containers::Array<char>& search,
        Containers::Array<Containers::StringView>& results, SearchFlags flags) const;

    /** A list of the strings of an array, as wide as the window's content and 100 pixels high, each on one line, of which it shows the
        first. An element that is no string is an empty line; what is no array has no lines. It has neither a label nor a frame. Changes
        nothing in the project.
        @param selected     the line that is shown as selected, perhaps none; set to the one that is clicked
        @return whether a line was clicked */
    bool stringList(Containers::StringView name, int& selected);

    /** @} */

    ProjectFile* project;
    ChangeManager* changes;
    EditorData* editorData;

    /* Views grow these from libraries of their own, which are unloaded before this object ends: they keep no address of a function
       of the one that grew them. */

    /** The scope path, NUL-terminated; its size is the capacity, which only grows. */
    Containers::Array<char> path;

    /** The text that the active text input shows, NUL-terminated; only grows. */
    Containers::Array<char> editBuffer;

    /** What was typed and is no change yet, NUL-terminated; without bytes where nothing is pending. */
    Containers::Array<char> pendingText;

    /** GUI id of the item that @ref pendingText belongs to, 0 for none. */
    unsigned pendingItem = 0;

    /** What is searched in the list of a resource picker, of which one is open at a time; NUL-terminated, of a fixed size. */
    Containers::Array<char> resourceSearch;

    /** The IDs that are listed, viewing the document as it was when they were found. */
    Containers::Array<Containers::StringView> resourceResults;

    /** The flags that @ref popFlags() restores. */
    std::vector<Flags> flagStack;

    /** The flags in force. */
    Flags flags;

    /** GUI id of the item that is being renamed, 0 for none. */
    unsigned renamingItem = 0;

private:
    friend Scope;

    /** What became of a text in a frame. */
    struct TextEdit {
        bool isChanged = false;
        bool isCommitted = false;
    };

    TextEdit editText(Containers::StringView name, Containers::StringView valuePath, bool isMultiline);

    /** Follows what is typed into the last item, which shows @ref editBuffer . A text that is committed lies in @ref pendingText
        until the caller drops it.
        @param differs      whether the input says that its text is not the stored one */
    TextEdit followText(unsigned item, Containers::StringView stored, bool differs);
    bool rename(Containers::StringView valuePath, Containers::StringView stored);

    /** Keeps the text of @ref editBuffer as that of an item, whose value holds another one. Returns whether it is news. */
    bool keepPendingText(unsigned item, Containers::StringView stored);
    void dropPendingText();

    void valueContextMenu(Containers::StringView valuePath);
    void copyValue(Containers::StringView valuePath);
    void pasteValue(Containers::StringView valuePath);

    /** Shows the scope path where the last item is under the mouse and the key for it is held. The innermost of several scopes
        that close behind one item wins. */
    void showPathTooltip();

    /** The list that a picker opens, and what is chosen there.
        @param min      corners of the picker's field, in pixels on the screen
        @param max */
    void resourcePopup(Containers::StringView type, bool byName, ResourceFilter& filter, bool isOpened,
        const ImVec2& min, const ImVec2& max);

    /** Fills @ref resourceResults with what the search text finds and the filter offers. */
    void findResources(Containers::StringView type, bool byName, ResourceFilter& filter);

    /** Sets the value at the scope path to a resource; not to one that it would have to refer to by a name that it does not
        have. */
    void pushResource(Containers::StringView type, bool byName, Containers::StringView id);

    /** Whether @ref pendingText is another text than the input began with: else the value changed under it, if anything. */
    bool _isPendingTyped = false;

    int _tooltipFrame = -1;
    Int _resultsRevision = -1;
    Containers::String _droppedId;
};

CORRADE_ENUMSET_OPERATORS(Ui::Flags)
CORRADE_ENUMSET_OPERATORS(Ui::ButtonFlags)
CORRADE_ENUMSET_OPERATORS(Ui::SearchFlags)

}
