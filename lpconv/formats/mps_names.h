#pragma once
// The names the MPS writer uses. Free MPS separates fields by blanks, so a name that is empty,
// holds a blank or a control character, or begins with '$' (a comment) cannot be written
// as it is: such a column is written as C<number>, a row as R<number> (numbers from 1), and the
// objective as "obj", each followed by as many '_' as needed to differ from every other name
// of its kind.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <lpconv/model/model.h>

namespace lpconv::detail {

// Whether free MPS can carry the name unchanged.
bool isPlainMpsName(std::string_view name);

class MpsNames {
 public:
  explicit MpsNames(const Model& model);
  std::string_view column(Model::Index j) const;
  std::string_view row(Model::Index i) const;
  std::string_view objective() const { return objective_; }

 private:
  const Model& model_;
  std::unordered_map<Model::Index, std::string> columns_;
  std::unordered_map<Model::Index, std::string> rows_;
  std::string objective_;
};

}  // namespace lpconv::detail
