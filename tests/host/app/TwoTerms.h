#pragma once

namespace QuorvaneEngine::Test {

/** JSON text of a project in two languages with two terms, one of which is translated. */
constexpr char TwoTerms[] = R"({
    "languages": {"en": {"isDefault": true}, "de": {}},
    "objects": {"door": {"text": "Door"}, "lamp": {"text": "Lamp"}},
    "localization": {
        "terms": {
            "door": {"sourceText": "/objects/door/text", "translatable": true},
            "lamp": {"sourceText": "/objects/lamp/text", "translatable": true}
        },
        "translations": {"de": {"door": {"text": "Pforte", "source": "037cf773608ce6c9"}}}
    }
})";

}
