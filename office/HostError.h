// The one error type that the object model throws. Every office failure below
// this layer arrives here as a number and a description; no office type or
// exception crosses the layer's border.
#pragma once

#include <stdexcept>
#include <string>

namespace nivarel::office {

class HostError : public std::runtime_error {
 public:
  // Numbers used by the layer itself; office failures keep kOfficeFailure.
  static constexpr int kOfficeFailure = 1004;
  static constexpr int kNotFound = -2147024809;  // "The item with the specified name wasn't found."
  static constexpr int kInvalidArgument = 5;
  static constexpr int kNameTaken = 70;

  HostError(int number, std::string description)
      : std::runtime_error(description), number_(number), description_(std::move(description)) {}

  int Number() const { return number_; }
  const std::string& Description() const { return description_; }

 private:
  int number_;
  std::string description_;
};

}  // namespace nivarel::office
