#include "app/ViewConditions.h"

#include "QuorvaneEditor/QuorvaneEditor.h"
#include "localization/LocalizationConditions.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

namespace {

Containers::String localizationReason(QuorvaneEditor& editor) {
    Containers::String text;
    for(const LocalizationCondition& condition: checkLocalizationConditions(editor.project()))
        text = text.isEmpty() ? condition.reason : text + "\n" + condition.reason;
    return text;
}

const ViewCondition Conditions[]{{"Localization"_s, localizationReason, repairLocalizationConditions}};

}

Containers::ArrayView<const ViewCondition> viewConditions() { return Conditions; }

}
