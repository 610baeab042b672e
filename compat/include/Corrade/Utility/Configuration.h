#pragma once

#include "Corrade/Containers/EnumSet.h"
#include "Corrade/Utility/ConfigurationGroup.h"

namespace Corrade::Utility {

/**
 * A file of `key=value` lines under `[group]` and `[group/subgroup]` headers, with comments after "#" or ";".
 *
 * A value keeps its outer blanks inside quotation marks; one of several lines stands between two lines of three
 * quotation marks. Only for reading: this subset neither changes nor saves.
 */
class Configuration: public ConfigurationGroup {
public:
    enum class Flag : unsigned { ReadOnly = 1 << 4 };
    using Flags = Containers::EnumSet<Flag>;

    /** A file that does not exist makes an empty valid configuration; one with mistakes prints and is not valid. */
    explicit Configuration(const std::string& filename, Flags flags);

    bool isValid() const { return _valid; }

private:
    const char* parse(Containers::StringView text);

    bool _valid = true;
};

} // namespace Corrade::Utility
