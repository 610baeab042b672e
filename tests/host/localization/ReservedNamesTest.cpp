#include "ReservedNames.h"

#include <gtest/gtest.h>

namespace QuorvaneEngine {

using namespace Containers::Literals;

TEST(ReservedNames, MembersThatTheLibraryPassesOverWhereItMergesAreToldApart) {
    const Containers::StringView lost = "is lost where the i18next library merges a file into another one"_s;
    EXPECT_EQ(ReservedNames::memberReason("__proto__"_s), lost);
    EXPECT_EQ(ReservedNames::memberReason("constructor"_s), lost);
    EXPECT_EQ(ReservedNames::memberReason("prototype"_s),
        "is lost in many programs that merge files, though not in the i18next library"_s);
}

TEST(ReservedNames, OfNamespacesOneAloneIsSpecial) {
    EXPECT_EQ(ReservedNames::namespaceReason("__proto__"_s),
        "is a namespace that the i18next library finds, but does not hold for loaded, so that it loads it again and again"_s);
    EXPECT_EQ(ReservedNames::namespaceReason("constructor"_s), ""_s);
    EXPECT_EQ(ReservedNames::namespaceReason("prototype"_s), ""_s);
}

TEST(ReservedNames, OtherNamesAreOrdinary) {
    for(const Containers::StringView name: {""_s, "proto"_s, "Constructor"_s, "prototypes"_s, "__proto_"_s,
            "toString"_s, "translate"_s, "translation"_s}) {
        EXPECT_EQ(ReservedNames::memberReason(name), ""_s) << name.data();
        EXPECT_EQ(ReservedNames::namespaceReason(name), ""_s) << name.data();
    }
}

}
