#include "ChangeHandler.h"

#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

namespace QuorvaneEngine {
namespace {

static_assert(std::is_abstract_v<ChangeHandler> && std::has_virtual_destructor_v<ChangeHandler>);

TEST(ChangeHandler, IsDestroyedThroughItsInterface) {
    bool isDestroyed = false;
    struct Handler: ChangeHandler {
        explicit Handler(bool& flag): isDestroyed{flag} {}
        ~Handler() override { isDestroyed = true; }
        void handle(const Change&, Containers::ArrayView<Containers::StringView>) override {}
        bool& isDestroyed;
    };
    std::unique_ptr<ChangeHandler> handler = std::make_unique<Handler>(isDestroyed);
    handler.reset();
    EXPECT_TRUE(isDestroyed);
}

}
}
