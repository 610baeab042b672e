#include "QuorvaneEditor/AllLanguages.h"

namespace QuorvaneEngine {

using namespace Containers::Literals;

const Language AllLanguages[LanguageCount]{
#include "AllLanguages.inc"
};

}
