// A library that lacks an entry point, or has a wrong one: see the definitions in CMakeLists.txt.

#include <Corrade/Utility/VisibilityMacros.h>

extern "C" {

#ifndef NO_VERSION
CORRADE_VISIBILITY_EXPORT int pluginVersion() {
#ifdef WRONG_VERSION
    return 0;
#else
    return 7;
#endif
}
#endif

#ifndef NO_INTERFACE
CORRADE_VISIBILITY_EXPORT const char* pluginInterface() {
#ifdef WRONG_INTERFACE
    return "compat.test.AbstractAnimal/0.9";
#else
    return "compat.test.AbstractAnimal/1.0";
#endif
}
#endif

#ifndef NO_INITIALIZER
CORRADE_VISIBILITY_EXPORT void pluginInitializer() {}
#endif

#ifndef NO_FINALIZER
CORRADE_VISIBILITY_EXPORT void pluginFinalizer() {}
#endif

#ifndef NO_INSTANCER
CORRADE_VISIBILITY_EXPORT void* pluginInstancer(void*, void*) { return nullptr; }
#endif

#ifdef UNDEFINED_SYMBOL
void definedNowhere();
CORRADE_VISIBILITY_EXPORT void callsIt() { definedNowhere(); }
#endif
}
