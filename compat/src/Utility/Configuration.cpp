#include "Corrade/Utility/Configuration.h"

#include <algorithm>

#include "Corrade/Containers/Array.h"
#include "Corrade/Containers/Optional.h"
#include "Corrade/Containers/StaticArray.h"
#include "Corrade/Utility/Debug.h"
#include "Corrade/Utility/Path.h"

namespace Corrade::Utility {

using namespace Containers::Literals;
using Containers::StringView;

ConfigurationGroup* ConfigurationGroup::group(const std::string& name, unsigned index) {
    return const_cast<ConfigurationGroup*>(std::as_const(*this).group(name, index));
}

const ConfigurationGroup* ConfigurationGroup::group(const std::string& name, unsigned index) const {
    for(const Group& group: _groups) {
        if(group.name == name && index-- == 0) return &group.group;
    }
    return nullptr;
}

unsigned ConfigurationGroup::valueCount(const std::string& key) const {
    return unsigned(std::count_if(_values.begin(), _values.end(), [&](const Value& v) { return v.key == key; }));
}

const std::string* ConfigurationGroup::find(const std::string& key, unsigned index) const {
    for(const Value& value: _values) {
        if(value.key == key && index-- == 0) return &value.value;
    }
    return nullptr;
}

Configuration::Configuration(const std::string& filename, Flags) {
    if(!Path::exists(filename)) return;
    const Containers::Optional<Containers::String> text = Path::readString(filename);
    const char* problem = text ? parse(*text) : nullptr;
    if(problem) Error{} << "Utility::Configuration::Configuration():" << problem;
    _valid = text && !problem;
    if(!_valid) {
        _values.clear();
        _groups.clear();
    }
}

// Returns what is wrong, or null.
const char* Configuration::parse(StringView text) {
    if(text.hasPrefix("\xEF\xBB\xBF"_s)) text = text.exceptPrefix(3);

    ConfigurationGroup* group = this;
    std::string* longValue = nullptr;
    for(StringView line: text.split('\n')) {
        const StringView content = line.trimmed();
        if(longValue) {
            if(content != "\"\"\""_s) {
                *longValue += std::string(line.trimmedSuffix("\r"_s)) + '\n';
                continue;
            }
            if(!longValue->empty()) longValue->pop_back();
            longValue = nullptr;
        } else if(content.isEmpty() || content.hasPrefix('#') || content.hasPrefix(';')) {
            continue;
        } else if(content.hasPrefix('[')) {
            if(!content.hasSuffix(']')) return "missing closing bracket for a group header";
            const StringView path = content.slice(1, content.size() - 1).trimmed();
            if(path.isEmpty()) return "empty group name";
            group = this;
            const Containers::Array<StringView> names = path.split('/');
            for(StringView name: names) {
                if(name.isEmpty()) return "empty subgroup name";
                // Only the last name makes a new group where there is one already.
                const bool last = name.end() == path.end();
                const unsigned count = unsigned(std::count_if(group->_groups.begin(), group->_groups.end(),
                    [&](const Group& other) { return StringView(other.name) == name; }));
                if(last || count == 0) group->_groups.push_back({name, {}});
                group = group->group(name, last ? count : count ? count - 1 : 0);
            }
        } else {
            const auto parts = content.partition('=');
            if(parts[1].isEmpty()) return "missing equals for a value";
            StringView value = parts[2].trimmed();
            const bool isLong = value == "\"\"\""_s;
            if(!isLong && value.hasPrefix('"')) {
                if(value.size() < 2 || !value.hasSuffix('"')) return "missing closing quote for a value";
                value = value.slice(1, value.size() - 1);
            }
            group->_values.push_back({parts[0].trimmed(), isLong ? StringView() : value});
            if(isLong) longValue = &group->_values.back().value;
        }
    }
    return longValue ? "missing closing quotes for a multi-line value" : nullptr;
}

} // namespace Corrade::Utility
