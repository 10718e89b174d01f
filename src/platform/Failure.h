#pragma once
// Errors that no routine handles: each one ends in the failure report.
#include <stdexcept>
#include <string>

namespace platform {

class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A value too large for the 16-bit integer it is converted into.
class OverflowError : public Failure {
public:
    OverflowError() : Failure("Overflow") {}
};

class DivisionByZero : public Failure {
public:
    DivisionByZero() : Failure("Divisione per zero") {}
};

// An index outside the stated bounds of a fixed table.
class IndexOutOfRange : public Failure {
public:
    explicit IndexOutOfRange(long long index)
        : Failure("Indice non compreso nell'intervallo: " + std::to_string(index)) {}
};

} // namespace platform
