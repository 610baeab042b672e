#pragma once

#include "ChangeHandler.h"
#include "Utils/Function.h"

namespace QuorvaneEngine {

/** Hands changes to a callable. */
class FunctionChangeHandler: public ChangeHandler {
public:
    using Callable = Function<void(const Change&, Containers::ArrayView<Containers::StringView>, void*)>;

    /** @param userData     handed to the callable as it is; must outlive the handler */
    explicit FunctionChangeHandler(Callable&& function, void* userData);

    void handle(const Change& change, Containers::ArrayView<Containers::StringView> pathComponents) override;

private:
    Callable _function;
    void* _userData;
};

}
