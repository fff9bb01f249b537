// The kernel's node tree, as the program walks it.
#include "installation/kernel/NodeList.h"
#include "installation/runtime/Call.h"

#include <gtest/gtest.h>

namespace devinst::test {
namespace {

// The object ids of the nodes with the same parent, each with its children in brackets.
std::wstring Show(const NodeList& list, std::size_t parent = NodeList::None) {
    std::wstring text;
    for (std::size_t node = list.FirstChild(parent); node != NodeList::None;
         node = list.Next(node)) {
        const std::wstring children = Show(list, node);
        text += list.ObjectId(node) + (children.empty() ? L" " : L"[" + children + L"] ");
    }
    return text;
}

NodeList Read(const std::wstring& nodes) {
    const XmlFile file = XmlFile::FromText(L"<nodes>" + nodes + L"</nodes>");
    return NodeList(file.Root());
}

std::wstring Node(int level, const std::wstring& object) {
    return L"<node level='" + std::to_wstring(level) + L"' object='" + object + L"'/>";
}

TEST(NodeList, IsEmptyWithoutNodes) {
    EXPECT_EQ(Show(NodeList(XmlElement())), L"");
    EXPECT_EQ(Show(Read(L"")), L"");
}

TEST(NodeList, FollowsTheLevels) {
    EXPECT_EQ(Show(Read(Node(1, L"a") + Node(2, L"b") + Node(3, L"c") + Node(2, L"d") +
                        Node(1, L"e") + Node(2, L"f"))),
              L"a[b[c ] d ] e[f ] ");
}

TEST(NodeList, GoesBackSeveralLevelsAtOnce) {
    EXPECT_EQ(
        Show(Read(Node(1, L"a") + Node(2, L"b") + Node(3, L"c") + Node(1, L"d") + Node(2, L"e"))),
        L"a[b[c ] ] d[e ] ");
}

TEST(NodeList, RefusesLevelsWithoutSense) {
    EXPECT_THROW(Read(Node(2, L"a")), ComFailure);
    EXPECT_THROW(Read(Node(0, L"a")), ComFailure);
    EXPECT_THROW(Read(Node(1, L"a") + Node(3, L"b")), ComFailure);
    EXPECT_THROW(Read(L"<node/>"), ComFailure);
}

} // namespace
} // namespace devinst::test
