#include "QuorvaneEditor/AbstractModule.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

TEST(AbstractModule, InterfaceIsAReverseDomainPrefixTheNameAndTheVersion) {
    EXPECT_EQ(AbstractModule::pluginInterface(), "dev.quorvane.QuorvaneEditor.AbstractModule/1.1");
    EXPECT_EQ(AbstractModule::pluginInterface(), QUORVANE_MODULE_INTERFACE);
}

TEST(AbstractModule, HasNoSearchPathsOfItsOwn) { EXPECT_TRUE(AbstractModule::pluginSearchPaths().isEmpty()); }

}
}
