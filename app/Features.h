#pragma once
#include <functional>
#include <memory>
#include <vector>

#include "shell/ui/Feature.h"

namespace quill {

class OpenProject;
struct ShellParts;

/// Every feature of the program, owned in one list.
struct Features {
  std::vector<std::unique_ptr<Feature>> list;
  const OpenProject* project = nullptr;  ///< one of the features; null: there are no projects

  /// Adds a feature that is made from `needs`, and gives it back for those that need it.
  template <typename Kind, typename... Needs>
  Kind& Add(Needs&&... needs) {
    auto feature = std::make_unique<Kind>(std::forward<Needs>(needs)...);
    Kind& added = *feature;
    list.push_back(std::move(feature));
    return added;
  }
  /// The last one goes first.
  void Clear() {
    project = nullptr;
    while (!list.empty()) list.pop_back();
  }
};

using FeatureFactory = std::function<Features(const ShellParts& parts)>;

/// All that the program has, each handed what it needs. The parts outlive them.
Features MakeFeatures(const ShellParts& parts);

}  // namespace quill
