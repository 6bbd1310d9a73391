#pragma once

#include <stdexcept>

namespace ferrite::utility {

/// The host's contract report: an operation was called against its stated conditions.
class ContractError : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};

/// \throws ContractError when an input condition does not hold.
inline void RequireInput(bool holds)
{
    if (!holds)
        throw ContractError(
            "$$$/ferrite/utility/Error/Contract/InputContractViolation=An input contract violation has "
            "occurred!");
}

}  // namespace ferrite::utility
