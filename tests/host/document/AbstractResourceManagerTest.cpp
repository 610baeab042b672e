#include "QuorvaneEditor/AbstractResourceManager.h"

#include <string>

#include <gtest/gtest.h>

namespace QuorvaneEngine {

TEST(AbstractResourceManager, ManagerNamesItsCollection) {
    std::string name = "meshes";
    ResourceManager manager{Containers::StringView{name.data(), name.size()}};
    name = "######";
    const AbstractResourceManager& base = manager;
    EXPECT_EQ(base.collection(), "meshes");
}

TEST(AbstractResourceManager, ObjectManagerIsThatOfObjects) {
    EXPECT_EQ(ObjectResourceManager{}.collection(), "objects");
}

}
