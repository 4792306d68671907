#pragma once

#include <string>
#include <vector>

namespace orvantesco::reading {

/// One family of the bank as a person wrote it down, independent of the bank's own table.
struct Family {
  int constant = 0;  ///< the value of its k... constant
  int first = 0;     ///< first and last index
  int last = 0;
  std::string firstName;
  std::string lastName;
  std::string type;                   ///< "bool", "int", "enum" or "double"
  std::vector<double> defaultValues;  ///< one for all members, or the first and the others'
  double min = 0.0;
  std::vector<double> max;  ///< one for all members, or one for each
  double step = 0.0;
  std::string unit;
  double shape = 0.0;
  std::string labels;  ///< name of the list, empty for none

  int count() const { return last - first + 1; }
  double defaultOf(int member) const;
  double maxOf(int member) const;
  std::string nameOf(int member) const;
};

/// In index order.
std::vector<Family> families();

std::vector<std::string> splitAt(const std::string& text, char separator);

}  // namespace orvantesco::reading
