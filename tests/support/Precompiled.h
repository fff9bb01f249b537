// What nearly every unit test includes, compiled once. Tests include what they use all the same.
#pragma once

#include <winsock2.h>
#include <windows.h>
#include <comdef.h>
#include <objbase.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>
