#pragma once

#include <cstddef>

namespace corvane::rules {

/// The size of the largest parameter: a text's, which has a scalar of its own.
inline constexpr std::size_t kLargestParameter = 18 * sizeof(void*);

///@{
/// The memory of one parameter, aligned for a pointer. Any thread may free what another one has
/// allocated. Throws std::bad_alloc when memory runs out.
void* allocateParameter();
void freeParameter(void* place) noexcept;
///@}

}  // namespace corvane::rules
