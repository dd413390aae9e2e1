#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace zn::test {

/// A text in which '~' stands for one or more digits. (GoogleTest's regular expressions differ between platforms.)
MATCHER_P(HasForm, form, "has the form " + std::string(form)) {
    std::string_view text = arg;
    for (const char wanted : std::string_view(form)) {
        const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
        const std::size_t length = wanted == '~' ? digits : (text.starts_with(wanted) ? 1 : 0);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return text.empty();
}

} // namespace zn::test
