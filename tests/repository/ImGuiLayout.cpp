#include "ImGuiLayout.h"

#ifdef IMGUI_ENABLE_TEST_ENGINE
#error this file has to be compiled against the plain flavour
#endif

int plainFlavourLayouts(ImGuiLayout (&layouts)[ImGuiLayoutCapacity]) { return imGuiLayouts(layouts); }

bool plainFlavourPassesVersionCheck() { return IMGUI_CHECKVERSION(); }
