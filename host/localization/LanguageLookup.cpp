#include "LanguageLookup.h"

namespace QuorvaneEngine {

Int findLanguage(const Containers::StringView code) {
    for(UnsignedInt i = 0; i != LanguageCount; ++i)
        if(AllLanguages[i].code == code) return Int(i);
    return -1;
}

}
