// A message client that talks to a peer on this machine.
#pragma once

#include "cms/TcpMessageClient.h"

#include "tests/support/LoopbackPeer.h"

#include <gmock/gmock.h>

#include <functional>
#include <utility>

namespace zt::test {

inline constexpr const wchar_t* NoConnection = L"Can't send data. No connection";

// A client connected to a peer that behaves as told.
class Exchange {
  public:
    explicit Exchange(LoopbackPeer::Behaviour behaviour, const TcpPlatform& platform = {})
        : peer(std::move(behaviour)), client(platform) {
        client.SetTimeout(10);
        EXPECT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    }

    LoopbackPeer peer;
    TcpMessageClient client;
};

inline ULONGLONG MillisecondsOf(const std::function<void()>& action) {
    const ULONGLONG begin = GetTickCount64();
    action();
    return GetTickCount64() - begin;
}

} // namespace zt::test
