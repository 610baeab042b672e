#pragma once

#include <cstddef>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/ArrayView.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <QuorvaneEditor/AbstractResourceManager.h>

namespace QuorvaneEngine {

class Ui;

}

namespace Gallery {

using namespace QuorvaneEngine;

/** What examples keep from one frame to the next and is no value of the project. */
struct ExampleState {
    bool isTicked = true;
    int choice = 0;
    int volume = 6;
    int presses = 0;
    int selectedLine = 1;
    Containers::String dropped;
    ObjectResourceManager objects;

    /** Of the search bars, each of a fixed capacity. */
    Containers::Array<char> search{Corrade::ValueInit, 64};
    Containers::Array<char> entrySearch{Corrade::ValueInit, 64};
    Containers::Array<char> resourceSearch{Corrade::ValueInit, 64};

    /** What was found, viewing the project as it was at a revision. */
    Containers::Array<Containers::StringView> entries;
    Containers::Array<Containers::StringView> resources;
    int entriesRevision = -1;
    int resourcesRevision = -1;
};

/** A widget that is shown. */
struct Example {
    /** What it stands among. */
    const char* family;

    /** The name of the function that draws it, which is that of the widget. */
    const char* name;

    /** The member of "/gallery" that it is bound to, null for none. */
    const char* key;

    /** Draws it, within the scope "gallery". */
    void (*draw)(Ui& ui, ExampleState& state);
};

/** All examples, family by family. */
Containers::ArrayView<const Example> examples();

}
