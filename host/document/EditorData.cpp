#include "QuorvaneEditor/EditorData.h"

#include "QuorvaneEditor/ProjectFile.h"

namespace QuorvaneEngine {

EditorData::EditorData(const ProjectFile& project): _project{&project} {}

Int EditorData::currentRevision() const { return _project->revision(); }

void EditorData::publishRevision() { _storedRevision = currentRevision(); }

}
