#include "QuorvaneEditor/AbstractResourceManager.h"

namespace QuorvaneEngine {

AbstractResourceManager::~AbstractResourceManager() = default;

ResourceManager::ResourceManager(Containers::StringView collection): _collection{collection} {}

Containers::StringView ResourceManager::collection() const { return _collection; }

ObjectResourceManager::ObjectResourceManager(): ResourceManager{"objects"} {}

}
