#pragma once

#include <functional>
#include <vector>

#include <Corrade/Containers/String.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Which types the documented values of a project have. What has another type counts as missing everywhere. */
namespace ProjectTypes {

/** Hears of a value of a wrong type.
    @param names    of the members that lead to it from the document's root
    @param is       its type, as "an array"
    @param mustBe   what it must be instead, as "true or false" */
using WrongType =
    std::function<void(const std::vector<Containers::StringView>& names, const char* is, const char* mustBe)>;

/** What a finding says of a wrong type, on one line.
    @param path     where it is, as far as it is not said already; may be empty */
QUORVANE_API Containers::String wrongType(Containers::StringView path, const char* is, const char* mustBe);

/** Looks at `/languages` and `/localization`, without the single translations. */
QUORVANE_API void checkLocalization(const rapidjson::Value& root, const WrongType& found);

/** Looks at the translations into one language.
    @param code     as the project has it */
QUORVANE_API void checkTranslations(const rapidjson::Value& root, Containers::StringView code, const WrongType& found);

/** Looks at the collections of resources, such as `/objects`. */
QUORVANE_API void checkResources(const rapidjson::Value& root, const WrongType& found);

}

}
