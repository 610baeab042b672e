#pragma once

#include <Corrade/Containers/ArrayView.h>

#include "QuorvaneEditor/Host.h"
#include "app/ViewCondition.h"

namespace QuorvaneEngine {

/** The conditions of the views that the editor comes with. */
QUORVANE_API Containers::ArrayView<const ViewCondition> viewConditions();

}
