#include <lpconv/formats/mps_names.h>

namespace lpconv::detail {

bool isPlainMpsName(std::string_view name) {
  if (name.empty() || name.front() == '$') return false;
  for (char c : name) {
    if (static_cast<unsigned char>(c) <= ' ' || c == 127) return false;
  }
  return true;
}

namespace {

// base, then base_, base__, ... until `taken` says no.
template <typename Taken>
std::string unusedName(std::string base, Taken taken) {
  while (taken(base)) base += '_';
  return base;
}

template <typename Taken>
std::string unusedName(char letter, Model::Index number, Taken taken) {
  std::string base(1, letter);
  base += std::to_string(number);
  return unusedName(std::move(base), taken);
}

}  // namespace

MpsNames::MpsNames(const Model& model) : model_(model) {
  for (Model::Index j = 0; j < model.columnCount(); ++j) {
    if (isPlainMpsName(model.columnName(j))) continue;
    columns_[j] = unusedName('C', j + 1, [&](const std::string& s) {
      if (model.findColumn(s)) return true;
      for (const auto& [k, name] : columns_) {
        if (name == s) return true;
      }
      return false;
    });
  }
  for (Model::Index i = 0; i < model.rowCount(); ++i) {
    if (isPlainMpsName(model.rowName(i))) continue;
    rows_[i] = unusedName('R', i + 1, [&](const std::string& s) {
      if (model.findRow(s)) return true;
      for (const auto& [k, name] : rows_) {
        if (name == s) return true;
      }
      return false;
    });
  }
  const std::string_view objective = model.objectiveName();
  const bool plain = isPlainMpsName(objective) && !model.findRow(objective);
  objective_ = plain ? std::string(objective) : unusedName("obj", [&](const std::string& s) {
    if (model.findRow(s)) return true;
    for (const auto& [k, name] : rows_) {
      if (name == s) return true;
    }
    return false;
  });
}

std::string_view MpsNames::column(Model::Index j) const {
  if (!columns_.empty()) {
    if (const auto it = columns_.find(j); it != columns_.end()) return it->second;
  }
  return model_.columnName(j);
}

std::string_view MpsNames::row(Model::Index i) const {
  if (!rows_.empty()) {
    if (const auto it = rows_.find(i); it != rows_.end()) return it->second;
  }
  return model_.rowName(i);
}

}  // namespace lpconv::detail
