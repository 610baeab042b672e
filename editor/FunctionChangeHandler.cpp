#include "FunctionChangeHandler.h"

namespace QuorvaneEngine {

FunctionChangeHandler::FunctionChangeHandler(Callable&& function, void* const userData)
    : _function{std::move(function)}, _userData{userData} {}

void FunctionChangeHandler::handle(
    const Change& change, const Containers::ArrayView<Containers::StringView> pathComponents) {
    _function(change, pathComponents, _userData);
}

}
