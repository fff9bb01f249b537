// The nodes of a project as it keeps them: one line each, in the order of a walk through the tree.
#pragma once

#include "installation/model/Xml.h"

#include <cstddef>
#include <string>
#include <vector>

namespace devinst {

class NodeList {
  public:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    // The <node> elements below nodes (null: none): "level" (1 below the root, at most one more
    // than the node before has), "name" and "object", the id of what the node refers to (empty:
    // nothing). Raises ComFailure for levels without sense.
    explicit NodeList(const XmlElement& nodes);

    // The first child of a node, or of the root (None); None when it has none.
    std::size_t FirstChild(std::size_t node) const;
    // The next child of the same parent; None when there is none.
    std::size_t Next(std::size_t node) const { return m_nodes[node].next; }
    const std::wstring& ObjectId(std::size_t node) const { return m_nodes[node].objectId; }

  private:
    struct Node {
        std::wstring objectId;
        unsigned long level;
        std::size_t next;
    };
    std::vector<Node> m_nodes;
};

} // namespace devinst
