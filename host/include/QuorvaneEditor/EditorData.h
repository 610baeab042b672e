#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"
#include "QuorvaneEditor/ResourceIndexMap.h"
#include "Utils/Function.h"

namespace QuorvaneEngine {

/** What the host publishes to views about the open project. */
class QUORVANE_API EditorData {
public:
    /** @param project  whose revision is counted; must outlive this object */
    explicit EditorData(const ProjectFile& project);

    /** Counts every applied change and every load of a project, at once. */
    Int currentRevision() const;

    /** The current revision as it was when this frame began: a change made during a frame is seen by the next, and an idle
        frame finds both equal. */
    Int storedRevision() const { return _storedRevision; }

    /** Stores the current revision. The host calls it once a frame, before any view is drawn. */
    void publishRevision();

    ResourceIndexMap imageIndices;
    ResourceIndexMap materialIndices;
    ResourceIndexMap meshIndices;

    /** Pictures of resources by the indices above: "1" of an image, "ma1" of a material, "m1" of a mesh. Null where the host has none;
        owned by the host, outlives every view. */
    ThumbnailManager* thumbnails = nullptr;

    /** Lets the user pick an object elsewhere in the editor, for a value that refers to one. Sets the value at once or later, or never.
        Takes the path of the value, which is not kept, and whether it holds the object's name and not its ID. Empty where the host
        has nothing to pick objects in: then widgets show the button for it disabled. */
    Function<void(Containers::StringView path, bool byName)> pickObject;

    /** The folder of the open project, absolute, with forward slashes; empty where there is none. */
    Containers::String projectFolder;

private:
    const ProjectFile* _project;
    Int _storedRevision = 0;
};

}
