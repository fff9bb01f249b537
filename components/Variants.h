#pragma once

#include "components/Values.h"
