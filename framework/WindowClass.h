#pragma once

#include "framework/Wnd.h"
