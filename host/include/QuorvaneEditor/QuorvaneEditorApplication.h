#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** The running application, as views see it. Owns nothing; both objects outlive every view. */
class QuorvaneEditorApplication {
public:
    explicit QuorvaneEditorApplication(QuorvaneEditor& editor, Ui& ui): _editor{&editor}, _ui{&ui} {}

    QuorvaneEditor& editor() const { return *_editor; }
    Ui& ui() const { return *_ui; }

private:
    QuorvaneEditor* _editor;
    Ui* _ui;
};

}
