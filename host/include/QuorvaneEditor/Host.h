#pragma once

/** @file
    Forward declarations of the host interface, and the macro that exports it.

    Everything below this folder is what a view module is compiled against. A module never links the host's libraries:
    its undefined symbols are resolved by the process that loads it. */

#include <Corrade/Containers/Containers.h>
#include <Magnum/Magnum.h>

#include <rapidjson/fwd.h>

#if defined(_WIN32)
#define QUORVANE_API
#else
/** Visible outside the library that defines it: part of the host interface. */
#define QUORVANE_API __attribute__((visibility("default")))
#endif

namespace QuorvaneEngine {

/** A growable array on the malloc-based allocator is emptied with its storage kept; see Containers/GrowableArray.h. */
namespace Containers = Corrade::Containers;

using Magnum::Int;
using Magnum::UnsignedInt;
using Magnum::UnsignedShort;

class AbstractModule;
class AbstractResourceManager;
class ChangeManager;
class EditorData;
class EditorState;
class JobSystem;
class JsonObject;
class KeyIterator;
class ObjectResourceManager;
class ProjectFile;
class ProjectWatch;
class QuorvaneEditor;
class QuorvaneEditorApplication;
class ResourceIndexMap;
class ThumbnailManager;
class Ui;
class ValueAccess;
struct Change;
struct Language;
struct LocalizationRun;

}
