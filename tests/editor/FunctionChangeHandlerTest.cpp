#include "FunctionChangeHandler.h"

#include <memory>

#include <gtest/gtest.h>

#include "Change.h"

namespace QuorvaneEngine {
namespace {

TEST(FunctionChangeHandler, CallsTheFunctionWithEverythingItGot) {
    struct Call {
        const Change* change;
        std::size_t pieces;
        void* userData;
    } call{};
    int userData = 0;
    FunctionChangeHandler handler{
        [&call](const Change& change, Containers::ArrayView<Containers::StringView> pieces, void* data) {
            call = {&change, pieces.size(), data};
        },
        &userData};
    const Change change;
    Containers::StringView pieces[]{"", "a"};
    handler.handle(change, pieces);
    EXPECT_EQ(call.change, &change);
    EXPECT_EQ(call.pieces, 2u);
    EXPECT_EQ(call.userData, &userData);
}

TEST(FunctionChangeHandler, DestroysTheFunctionWithItself) {
    const auto shared = std::make_shared<int>(1);
    {
        const Containers::Pointer<ChangeHandler> handler{new FunctionChangeHandler{
            [shared](const Change&, Containers::ArrayView<Containers::StringView>, void*) {}, nullptr}};
        EXPECT_EQ(shared.use_count(), 2);
    }
    EXPECT_EQ(shared.use_count(), 1);
}

}
}
