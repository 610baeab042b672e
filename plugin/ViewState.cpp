#include "ViewState.h"

using namespace Corrade::Containers::Literals;

namespace QuorvaneEngine::ViewState {

int currentTab = 0;
int currentMode = 0;
int lastSearch = 0;
int toRemovoveIndex = -1;
float lastTableHeight = 0.0f;
int currentFormat = 0;
bool enableZipCompression = false;
const Corrade::Containers::StringView importExportPopupNames[3]{"None"_s, "Import Terms"_s, "Export Terms"_s};
bool isOpen = false;
float lastFramePopupHeight = 0.0f;
char pathBuffer[256]{};

}
