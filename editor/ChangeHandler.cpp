#include "ChangeHandler.h"

namespace QuorvaneEngine {

ChangeHandler::~ChangeHandler() = default;

}
