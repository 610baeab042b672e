#pragma once

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Keeps the resources of one collection of the project, such as its meshes. */
class QUORVANE_API AbstractResourceManager {
public:
    virtual ~AbstractResourceManager();

    /** The name of the collection, the project's top-level member that holds it. */
    virtual Containers::StringView collection() const = 0;
};

/** The resources of one collection, by its name. */
class QUORVANE_API ResourceManager: public AbstractResourceManager {
public:
    explicit ResourceManager(Containers::StringView collection);

    Containers::StringView collection() const override;

private:
    Containers::String _collection;
};

/** The resources of the collection "objects". */
class QUORVANE_API ObjectResourceManager: public ResourceManager {
public:
    explicit ObjectResourceManager();
};

}
