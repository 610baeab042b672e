#include "FoundLanguages.h"

#include <algorithm>

#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Utility/Format.h>

#include "../document/PrintableText.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "TermFilePath.h"
#include "TermKey.h"

namespace QuorvaneEngine {

Int FoundLanguages::find(const Containers::StringView code) const {
    TermFilePath parsed;
    const Containers::String path = TermFilePath::make(code, DefaultNamespace);
    return TermFilePath::parse(path, false, _map, parsed) ? parsed.language : -1;
}

bool FoundLanguages::isAskedFor(const UnsignedInt language) const {
    return _languages.isEmpty() || std::find(_languages.begin(), _languages.end(), language) != _languages.end();
}

void FoundLanguages::add(const Containers::StringView code, const UnsignedInt language) {
    for(std::size_t i = 0; i != _map.size(); ++i)
        if(_map[i].code == code) _isMapped[i] = true;
    if(!isAskedFor(language) && std::find(_others.begin(), _others.end(), language) == _others.end())
        _others.push_back(language);
}

bool FoundLanguages::noticeUnusedMappings(Containers::Array<FileNotice>& notices) const {
    for(std::size_t i = 0; i != _map.size(); ++i)
        if(!_isMapped[i])
            Containers::arrayAppend(notices,
                FileNotice{{},
                    Corrade::Utility::format("--map {}={}: nothing is called {} here", printable(_map[i].code),
                        AllLanguages[_map[i].language].code, printable(_map[i].code))});
    return std::find(_isMapped.begin(), _isMapped.end(), false) != _isMapped.end();
}

}
