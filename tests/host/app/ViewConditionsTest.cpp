#include "app/ViewConditions.h"

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "QuorvaneEditor/QuorvaneEditor.h"
#include "document/EditorSession.h"

namespace QuorvaneEngine {
namespace {

void replaceDocument(EditorSession& session, const char* json) {
    rapidjson::Document document;
    document.Parse(json);
    session.replaceDocument(std::move(document));
}

TEST(ViewConditions, TheLocalizationViewsConditionGivesItsReasonAndRepairsIt) {
    ASSERT_EQ(viewConditions().size(), 1u);
    const ViewCondition& condition = viewConditions()[0];
    EXPECT_EQ(condition.view, "Localization");

    EditorSession session;
    replaceDocument(session, R"({"languages": {"en": {"isDefault": true}}})");
    EXPECT_EQ(condition.reason(session.editor()), "");

    replaceDocument(session, R"({"languages": {"de": {}}, "localization": 3})");
    const Containers::String reason = condition.reason(session.editor());
    EXPECT_TRUE(reason.contains('\n')) << reason.data();
    condition.repair(session.editor());
    EXPECT_EQ(condition.reason(session.editor()), "");
    session.undo();
    EXPECT_EQ(condition.reason(session.editor()), reason);
}

}
}
