// SPDX-License-Identifier: Apache-2.0
#include "options/output_names.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

// Documents of folder arguments: the paths are those below the folder /in.
Names names(const Names& relatives) {
  std::vector<cli::FoundInput> inputs;
  for (const std::string& relative : relatives) {
    inputs.push_back({relative, relative, "/in/" + relative, true});
  }
  return cli::distinct_names(inputs);
}

// Documents that were given one by one.
Names names_of_paths(const Names& paths) {
  std::vector<cli::FoundInput> inputs;
  for (const std::string& path : paths) {
    inputs.push_back({path, path.substr(path.rfind('/') + 1), path, true});
  }
  return cli::distinct_names(inputs);
}

TEST(OutputNames, LoseTheirExtensionUnlessOthersWouldGetTheSame) {
  EXPECT_EQ(names({"a/x.png", "b/x.png", "a/x.jpg", "y", "z.2.tif"}),
            (Names{"a/x.png", "b/x", "a/x.jpg", "y", "z.2"}));
}

TEST(OutputNames, OneThatAnotherKeepsWholeIsNotTakenByAThird) {
  EXPECT_EQ(names({"a.png", "a.jpg", "a.png.gif"}), (Names{"a.png", "a.jpg", "a.png.gif"}));
}

TEST(OutputNames, SameNamesGetTheirFolders) {
  EXPECT_EQ(names_of_paths({"/s/y1/a.png", "/s/y2/a.png", "/t/b.png"}),
            (Names{"y1/a", "y2/a", "b"}));
  EXPECT_EQ(names_of_paths({"/s/a.png", "/s/y/a.png", "/s/y/z/a.png"}),
            (Names{"a", "y/a", "y/z/a"}));
  EXPECT_EQ(names_of_paths({"/a.png", "/b/a.png"}), (Names{"a", "b/a"}));
}

TEST(OutputNames, FolderAndExtensionTellApartTogether) {
  EXPECT_EQ(names_of_paths({"/s/y1/a.png", "/s/y2/a.png", "/s/y1/a.tif"}),
            (Names{"y1/a", "y2/a", "a.tif"}));
  EXPECT_EQ(names_of_paths({"/s/y1/a.png", "/s/y1/a.tif", "/s/y2/a.png", "/s/y2/a.tif"}),
            (Names{"y1/a.png", "y1/a.tif", "y2/a.png", "y2/a.tif"}));
}

TEST(OutputNames, WhatCannotBeToldApartStays) {
  EXPECT_EQ(cli::distinct_names({{"-", "stdin", "", true}, {"stdin", "stdin", "/in/stdin", true}}),
            (Names{"stdin", "stdin"}));
}

TEST(OutputNames, ManyDocumentsAreNamedInAMoment) {
  Names paths;
  for (int number = 0; number < 20000; ++number) {
    paths.push_back("/in/" + std::to_string(number / 2) + (number % 2 == 0 ? "/a.png" : "/a.tif"));
  }
  EXPECT_EQ(names_of_paths(paths)[19999], "9999/a.tif");
}

}  // namespace
