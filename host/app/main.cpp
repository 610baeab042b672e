#include "app/EditorApplication.h"

int main(int argc, char** argv) { return int(QuorvaneEngine::runEditor(argc, argv, {})); }
