#include "DefaultValues.h"

#include <gtest/gtest.h>

#include "TestDocument.h"

namespace QuorvaneEngine {

struct Default {
    const char* path;
    const char* json;
};

class DefaultValuesOfPath: public testing::TestWithParam<Default> {};

TEST_P(DefaultValuesOfPath, AreAsDocumented) {
    DefaultValues defaults;
    EXPECT_EQ(printed(defaults.find(GetParam().path)), GetParam().json) << GetParam().path;
}

INSTANTIATE_TEST_SUITE_P(Documented, DefaultValuesOfPath,
    testing::Values(Default{"/languages/de/isDefault", "false"},
        Default{"/localization/terms/door/sourceText", R"("")"},
        Default{"/localization/terms/door/translatable", "false"}, Default{"/localization/terms/door/note", R"("")"},
        Default{"/localization/terms/door/maxLength", "0"}, Default{"/localization/terms/a~1b/translatable", "false"},
        Default{"/localization/terms//translatable", "false"}, Default{"/localization/terms/123/translatable", "false"},
        Default{"/localization/strings/door", R"("")"}, Default{"/localization/translations/de/door/text", R"("")"},
        Default{"/localization/translations/de/door/source", R"("")"},
        Default{"/localization/translations/de/door/state", R"("")"},
        Default{"/localization/translations/de/door/note", R"("")"}, Default{"/objects/door/name", R"("")"},
        Default{"/textures/t/name", R"("")"}));

INSTANTIATE_TEST_SUITE_P(NotDocumented, DefaultValuesOfPath,
    testing::Values(Default{"", "nothing"}, Default{"/", "nothing"}, Default{"/languages", "nothing"},
        Default{"/languages/de", "nothing"}, Default{"/languages/de/isDefault/x", "nothing"},
        Default{"/languages/de/isDefaul", "nothing"}, Default{"/languages/de/x/isDefault", "nothing"},
        Default{"languages/de/isDefault", "nothing"}, Default{"/languages/d~e/isDefault", "nothing"},
        Default{"/localization/terms/door/unknown", "nothing"}, Default{"/sounds/s/name", "nothing"}));

TEST(DefaultValues, EachPathHasOneValueThatStaysInPlace) {
    DefaultValues defaults;
    EXPECT_EQ(defaults.find("/languages/de/isDefault"), defaults.find("/languages/fr/isDefault"));
}

}
