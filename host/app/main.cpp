#include "app/EditorApplication.h"
#include "app/ViewConditions.h"

int main(int argc, char** argv) { return int(QuorvaneEngine::runEditor(argc, argv, QuorvaneEngine::viewConditions())); }
