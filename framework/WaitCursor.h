#pragma once

#include "framework/WinApp.h"
