#pragma once

#include "numeric/instruction_set.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace zn::test {

/// The forms of every kernel that are built, by the number of doubles that they handle together.
using KernelForms =
    testing::Types<std::integral_constant<int, 2>, std::integral_constant<int, 4>, std::integral_constant<int, 8>>;

struct NameOfKernelForm {
    template <class Form> static std::string GetName(int) { return std::to_string(Form::value) + "Lanes"; }
};

/// Skips the forms that this processor cannot run.
template <class Form> class KernelForm : public testing::Test {
    void SetUp() override {
        if (kernelLanes() < Form::value) GTEST_SKIP() << "not for this processor";
    }
};

} // namespace zn::test
