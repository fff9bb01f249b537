// What most of the program's sources include, compiled once. Sources include what they use all the
// same.
#pragma once

#include <winsock2.h>
#include <windows.h>
#include <comdef.h>
#include <ocidl.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>
