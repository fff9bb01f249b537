#pragma once

#include <string>
#include <vector>

namespace devinst::test {

// Reads what stand-ins write to the trace while the object lives. A program that links it has
// ZT_TRACE name a file of its own from the start.
class TraceCapture {
  public:
    TraceCapture();

    // The lines so far.
    std::vector<std::string> Lines() const;
    // The last line; empty when there is none.
    std::string Last() const;

  private:
    std::size_t m_start;
};

} // namespace devinst::test
