#pragma once

#include "support/ComPtr.h"
