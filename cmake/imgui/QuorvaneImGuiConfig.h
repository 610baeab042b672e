#pragma once

/* Compile-time configuration of Dear ImGui, the same for the library, the host and every view plug-in. Whatever stands
   here is part of the binary interface between them, with one exception: the Test Engine's hooks, which add functions
   and flags but change no layout. */

#define IMGUI_DISABLE_OBSOLETE_FUNCTIONS
#define IMGUI_DISABLE_DEMO_WINDOWS
#define IMGUI_ENABLE_FREETYPE

/* Letters beyond the basic plane occur in translations. */
#define IMGUI_USE_WCHAR32

/* Long texts in a large window pass 65,536 vertices in one draw list. */
#define ImDrawIdx unsigned int

#ifdef IMGUI_ENABLE_TEST_ENGINE
#define IMGUI_TEST_ENGINE_ENABLE_COROUTINE_STDTHREAD_IMPL 1
#define IMGUI_TEST_ENGINE_ENABLE_STD_FUNCTION 1
#define IMGUI_TEST_ENGINE_ENABLE_CAPTURE 0
#define IMGUI_TEST_ENGINE_ENABLE_IMPLOT 0
#define IMGUI_TEST_ENGINE_IS_GAME_CONSOLE 0

/* In a test a misuse of the library ends the case, in release builds, too. */
#include <cstdio>
#include <cstdlib>
#define IM_ASSERT(expression)                                                                                          \
    do {                                                                                                               \
        if(!(expression)) {                                                                                            \
            std::fprintf(stderr, "Dear ImGui assertion %s failed at %s:%d\n", #expression, __FILE__, __LINE__);        \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while(false)
#endif
