// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_PAGE_TREE_H
#define ZELK_PDFPRODUCER_PAGE_TREE_H

#include <vector>

#include "pdfproducer/object_file.h"

namespace zelk::pdf {

// The tree in which viewers look pages up, with few enough branches at each node that any page of a
// long document is found at once.
class PageTree {
 public:
  explicit PageTree(ObjectFile& file) : _file(file) {}

  bool empty() const { return _leaves.empty(); }
  // Takes the object number of the next page; returns that of the node to be named as its parent.
  int add(int page);
  // Writes the nodes of a tree that has pages; returns the object number of the root.
  int finish();

 private:
  struct Node {
    int number = 0;
    int pages = 0;
    std::vector<int> kids;
  };

  std::vector<Node> write_level(const std::vector<Node>& level);
  void write(const Node& node, int parent);

  ObjectFile& _file;
  std::vector<Node> _leaves;
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_PAGE_TREE_H
