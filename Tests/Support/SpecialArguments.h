/// \file
/// Special values in every argument of a function, alone and in pairs.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>

#include "Support/SpecialValues.h"

namespace quarn::test {

/// Calls \p check with the usual arguments in which one, then each pair, is replaced by a special
/// value.
template <std::size_t N, class Check>
void withSpecialArguments(const std::array<double, N>& usual, Check check) {
    for (std::size_t i = 0; i < N; ++i)
        for (const double first : kSpecialValues) {
            std::array<double, N> arguments = usual;
            arguments[i] = first;
            SCOPED_TRACE(::testing::Message() << "argument " << i << " is " << first);
            check(arguments);
            for (std::size_t j = i + 1; j < N; ++j)
                for (const double second : kSpecialValues) {
                    arguments[j] = second;
                    SCOPED_TRACE(::testing::Message() << "argument " << j << " is " << second);
                    check(arguments);
                    arguments[j] = usual[j];
                }
        }
}

}  // namespace quarn::test
