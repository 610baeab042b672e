#pragma once

#include "QuorvaneEditor/Host.h"

struct ImDrawData;

namespace QuorvaneEngine {

/** Makes the letters that views draw in colours of their own, which are made for a dark ground, readable on the ground of the present theme:
    of text in one of @ref Theme::Color::ViewWhite and what follows, each vertex takes the value of the theme. Shapes and pictures
    keep their colours, and so do letters in a colour one step beside, for views that draw a dark ground for them. Between the end of the frame and its rendering. */
QUORVANE_API void fitViewLetters(ImDrawData& drawData);

}
