#include "params/BankReading.h"

#include <algorithm>
#include <sstream>

#include "params/BankRows.h"

namespace orvantesco::reading {
namespace {

std::vector<double> numbersIn(const std::string& text) {
  std::vector<double> numbers;
  for (const std::string& part : splitAt(text, ',')) numbers.push_back(std::stod(part));
  return numbers;
}

/// first-last|first name|last name|type|default|min|max|step|unit|shape|labels
Family familyOf(const Row& row) {
  const std::vector<std::string> cells = splitAt(row.cells, '|');
  Family family;
  family.constant = row.constant;
  const auto dash = cells.at(0).find('-');
  family.first = std::stoi(cells.at(0).substr(0, dash));
  family.last = std::stoi(cells.at(0).substr(dash + 1));
  family.firstName = cells.at(1);
  family.lastName = cells.at(2);
  family.type = cells.at(3);
  family.defaultValues = numbersIn(cells.at(4));
  family.min = std::stod(cells.at(5));
  family.max = numbersIn(cells.at(6));
  family.step = std::stod(cells.at(7));
  family.unit = cells.at(8);
  family.shape = std::stod(cells.at(9));
  family.labels = cells.at(10);
  return family;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.rfind(from), from.size(), to);
}

std::string laneName(const std::string& first, int member) {
  const std::string step = std::to_string(member % 16 + 1);
  return replaced(first, "1 Step1", std::to_string(member / 16 + 1) + " Step" + step);
}

std::string fxName(const std::string& first, int member) {
  const char* const stages[] = {"PR", "FB", "PO"};
  return replaced(first, "1 PR", std::to_string(member % 4 + 1) + " " + stages[member / 4]);
}

/// First and last name differ in one digit, which counts the members.
std::string countedName(const Family& family, int member) {
  std::string name = family.firstName;
  for (std::size_t i = 0; i < name.size(); ++i)
    if (name[i] != family.lastName[i]) name[i] = static_cast<char>('1' + member);
  return name;
}

bool bearsThirdUnitsName(const Family& family, int member) {
  const int bases[] = {1020, 1028, 1036, 1040, 1044};
  return member == 1 && std::ranges::find(bases, family.first) != std::end(bases);
}

}  // namespace

std::vector<std::string> splitAt(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text + separator);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

double Family::defaultOf(int member) const {
  return member == 0 ? defaultValues.front() : defaultValues.back();
}

double Family::maxOf(int member) const {
  return max.size() == 1 ? max[0] : max.at(static_cast<std::size_t>(member));
}

std::string Family::nameOf(int member) const {
  if (count() == 64) return laneName(firstName, member);
  if (count() == 12) return fxName(firstName, member);
  return countedName(*this, bearsThirdUnitsName(*this, member) ? 2 : member);
}

std::vector<Family> families() {
  std::vector<Family> all;
  for (const Row& row : rows()) all.push_back(familyOf(row));
  return all;
}

}  // namespace orvantesco::reading
