#include "QuorvaneEditor/AbstractModule.h"

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

class Recorder: public AbstractModule {
public:
    explicit Recorder(Corrade::PluginManager::AbstractManager& manager): AbstractModule{manager, "Recorder"} {}

    using AbstractModule::load;
    void load(Containers::ArrayView<char> state) override {
        ++loads;
        data = state.data();
        size = state.size();
    }
    Containers::Array<char> unload(bool) override { return {}; }
    Int moduleType() override { return 0; }

    int loads = 0;
    const void* data = this;
    std::size_t size = 77;
};

TEST(AbstractModule, InterfaceIsAReverseDomainPrefixTheNameAndTheVersion) {
    EXPECT_EQ(AbstractModule::pluginInterface(), "dev.quorvane.QuorvaneEditor.AbstractModule/1.1");
    EXPECT_EQ(AbstractModule::pluginInterface(), QUORVANE_MODULE_INTERFACE);
}

TEST(AbstractModule, HasNoSearchPathsOfItsOwn) { EXPECT_TRUE(AbstractModule::pluginSearchPaths().isEmpty()); }

TEST(AbstractModule, LoadWithoutArgumentsLoadsAnEmptyState) {
    Corrade::PluginManager::Manager<AbstractModule> manager{""};
    Recorder module{manager};
    module.load();
    EXPECT_EQ(module.loads, 1);
    EXPECT_EQ(module.data, nullptr);
    EXPECT_EQ(module.size, 0u);
}

}
}
