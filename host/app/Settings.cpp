#include "app/Settings.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <rapidjson/document.h>

#include "document/JsonReader.h"

namespace QuorvaneEngine {

namespace {

/** By scheme. */
constexpr const char* SchemeNames[]{"dark", "light"};

constexpr Int Scales[]{75, 90, 100, 110, 125, 150, 175, 200, 250, 300};
static_assert(Scales[0] == Settings::SmallestScale && Scales[std::size(Scales) - 1] == Settings::LargestScale);

constexpr const char* VersionName = "version";
constexpr const char* SchemeName = "theme";
constexpr const char* ScaleName = "scale";

/** Sets a member in its place, or as the last one. */
void setMember(rapidjson::Document& object, const char* name, rapidjson::Value value) {
    if(object.HasMember(name)) object[name] = std::move(value);
    else object.AddMember(rapidjson::StringRef(name), std::move(value), object.GetAllocator());
}

}

Settings::Settings(const Containers::StringView folder): _file{folder, "settings.json"} { read(); }

void Settings::read() {
    rapidjson::Document document;
    JsonError error;
    const UserFile::Found found = _file.read(document, error);
    if(found == UserFile::Found::Nothing) return;
    if(found == UserFile::Found::Error) return _file.warn("Settings::read", error);
    if(const char* const reason = take(document)) _file.warn("Settings::read", {1, 1, reason});
}

const char* Settings::take(const rapidjson::Document& document) {
    if(!document.IsObject()) return "the settings are no object";
    const auto version = document.FindMember(VersionName);
    if(version == document.MemberEnd() || !version->value.IsInt() || version->value.GetInt() != Version)
        return "the settings are of another version";
    const char* reason = nullptr;
    if(const auto name = document.FindMember(SchemeName); name != document.MemberEnd()) {
        const auto* const known = std::find_if(
            std::begin(SchemeNames), std::end(SchemeNames), [&](const char* known) { return name->value == known; });
        if(known == std::end(SchemeNames)) reason = "the theme is none";
        else _scheme = Theme::Scheme(known - SchemeNames);
    }
    if(const auto scale = document.FindMember(ScaleName); scale != document.MemberEnd()) {
        const bool isPercent = scale->value.IsInt();
        if(isPercent && scale->value.GetInt() >= SmallestScale && scale->value.GetInt() <= LargestScale)
            _scale = scale->value.GetInt();
        else
            reason = reason ? "the theme is none, and the scale is no number from 75 to 300"
                            : "the scale is no number from 75 to 300";
    }
    return reason;
}

void Settings::setScheme(const Theme::Scheme scheme) {
    if(scheme == _scheme) return;
    _scheme = scheme;
    write(SchemeName, rapidjson::Value{rapidjson::StringRef(SchemeNames[std::size_t(_scheme)])});
}

void Settings::setScale(const Int percent) {
    const Int scale = std::clamp(percent, SmallestScale, LargestScale);
    if(scale == _scale) return;
    _scale = scale;
    write(ScaleName, rapidjson::Value{_scale});
}

Int Settings::nextScale(const Int percent, const int direction) {
    if(direction > 0) {
        const Int* const larger = std::upper_bound(std::begin(Scales), std::end(Scales), percent);
        return larger == std::end(Scales) ? LargestScale : *larger;
    }
    const Int* const notSmaller = std::lower_bound(std::begin(Scales), std::end(Scales), percent);
    return notSmaller == std::begin(Scales) ? SmallestScale : notSmaller[-1];
}

void Settings::write(const char* const name, rapidjson::Value value) const {
    rapidjson::Document document{rapidjson::kObjectType};
    rapidjson::Document present;
    JsonError error;
    if(_file.read(present, error) == UserFile::Found::Document && present.IsObject()) document.Swap(present);
    const bool hasVersion = document.HasMember(VersionName) && document[VersionName].IsNumber();
    if(hasVersion && document[VersionName].GetDouble() > Version)
        return _file.warn("Settings::write", {1, 1, "the settings are of a later version, and stay as they are"});
    setMember(document, VersionName, rapidjson::Value{Version});
    setMember(document, name, std::move(value));
    _file.write("Settings::write", document);
}

}
