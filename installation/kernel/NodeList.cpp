#include "installation/kernel/NodeList.h"

#include "installation/runtime/Call.h"

#include <cwchar>

namespace devinst {

NodeList::NodeList(const XmlElement& nodes) {
    if (nodes == nullptr)
        return;
    // The last node of each level, for as long as its parent may get more children.
    std::vector<std::size_t> last;
    for (const XmlElement& element : Children(nodes, L"node")) {
        const unsigned long level = std::wcstoul(Attribute(element, L"level").c_str(), nullptr, 10);
        if (level == 0 || level > last.size() + 1)
            throw ComFailure{E_FAIL, L"The project's node tree is damaged."};
        if (level <= last.size()) {
            m_nodes[last[level - 1]].next = m_nodes.size();
            last.resize(level - 1);
        }
        last.push_back(m_nodes.size());
        m_nodes.push_back({Attribute(element, L"object"), level, None});
    }
}

std::size_t NodeList::FirstChild(std::size_t node) const {
    if (node == None)
        return m_nodes.empty() ? None : 0;
    const std::size_t follower = node + 1;
    const bool isChild =
        follower < m_nodes.size() && m_nodes[follower].level == m_nodes[node].level + 1;
    return isChild ? follower : None;
}

} // namespace devinst
