#pragma once

// The base of tips with an image, where users of images look for it.

#include "framework/windows/tip_window.h"
