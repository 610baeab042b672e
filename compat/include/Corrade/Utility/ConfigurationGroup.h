#pragma once

#include <string>
#include <vector>

#include "Corrade/Containers/String.h"
#include "Corrade/Containers/StringStl.h"
#include "Corrade/Utility/Utility.h"

namespace Corrade::Utility {

/** Named values and named groups below them, in the order of the file. A name may come several times. */
class ConfigurationGroup {
public:
    bool isEmpty() const { return _values.empty() && _groups.empty(); }

    bool hasGroup(const std::string& name, unsigned index = 0) const { return group(name, index); }
    /** Null if there is none. */
    ConfigurationGroup* group(const std::string& name, unsigned index = 0);
    const ConfigurationGroup* group(const std::string& name, unsigned index = 0) const;

    bool hasValue(const std::string& key, unsigned index = 0) const { return find(key, index); }
    unsigned valueCount(const std::string& key) const;
    /** Empty if there is none. A StringView lives as long as the group. */
    template <class T = std::string> T value(const std::string& key, unsigned index = 0) const {
        const std::string* found = find(key, index);
        return found ? T(*found) : T();
    }
    /** All values of that name. */
    template <class T = std::string> std::vector<T> values(const std::string& key) const {
        std::vector<T> out;
        for(unsigned i = 0; const std::string* found = find(key, i); ++i) out.push_back(T(*found));
        return out;
    }

private:
    friend Configuration;

    struct Value;
    struct Group;
    const std::string* find(const std::string& key, unsigned index) const;

    std::vector<Value> _values;
    std::vector<Group> _groups;
};

struct ConfigurationGroup::Value {
    std::string key, value;
};

struct ConfigurationGroup::Group {
    std::string name;
    ConfigurationGroup group;
};

} // namespace Corrade::Utility
