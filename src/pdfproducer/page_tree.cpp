// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/page_tree.h"

namespace zelk::pdf {

namespace {

constexpr std::size_t kMostKids = 32;

}  // namespace

int PageTree::add(int page) {
  if (_leaves.empty() || _leaves.back().kids.size() == kMostKids) {
    _leaves.push_back({_file.reserve(), 0, {}});
  }
  Node& leaf = _leaves.back();
  leaf.kids.push_back(page);
  ++leaf.pages;
  return leaf.number;
}

int PageTree::finish() {
  std::vector<Node> level = std::move(_leaves);
  while (level.size() > 1) level = write_level(level);
  write(level.front(), 0);
  return level.front().number;
}

// Writes the nodes of a level; returns their parents.
std::vector<PageTree::Node> PageTree::write_level(const std::vector<Node>& level) {
  std::vector<Node> parents;
  for (const Node& node : level) {
    if (parents.empty() || parents.back().kids.size() == kMostKids) {
      parents.push_back({_file.reserve(), 0, {}});
    }
    Node& parent = parents.back();
    parent.kids.push_back(node.number);
    parent.pages += node.pages;
    write(node, parent.number);
  }
  return parents;
}

void PageTree::write(const Node& node, int parent) {
  auto dictionary = QPDFObjectHandle::parse("<< /Type /Pages >>");
  auto kids = QPDFObjectHandle::newArray();
  for (const int kid : node.kids) kids.appendItem(ObjectFile::reference(kid));
  dictionary.replaceKey("/Kids", kids);
  dictionary.replaceKey("/Count", QPDFObjectHandle::newInteger(node.pages));
  if (parent != 0) dictionary.replaceKey("/Parent", ObjectFile::reference(parent));
  _file.add(node.number, dictionary);
}

}  // namespace zelk::pdf
