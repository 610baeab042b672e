#pragma once

#include <string>

#include <Corrade/Containers/String.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "JsonWriter.h"

namespace QuorvaneEngine {

/** A fixture that keeps the warnings of the last call, and shows documents as files hold them. */
class WarnedTest: public testing::Test {
protected:
    /** Calls what says whether it succeeded, with its warnings in @ref warning . */
    template <class Call> bool warned(Call call) {
        Containers::String out;
        bool result;
        {
            Corrade::Utility::Warning redirect{&out};
            result = call();
        }
        warning = text(out);
        return result;
    }

    static std::string text(Containers::StringView view) { return {view.data(), view.size()}; }

    /** A value in a single line, or why no file can hold it. */
    static std::string textOf(const rapidjson::Value& value) {
        Containers::String out, error;
        return text(JsonWriter::write(value, {0, false, {}}, out, error) ? out : error);
    }

    std::string warning;
};

}
