#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <stdexcept>

namespace {

// Runs the tests under the locale that QUARN_TEST_LOCALE names, set both ways that a process has.
bool setLocaleFromEnvironment() {
    const char* name = std::getenv("QUARN_TEST_LOCALE");
    if (name == nullptr) return true;
    try {
        std::locale::global(std::locale(name));
    } catch (const std::runtime_error&) {
        std::cerr << "the locale " << name << " cannot be set\n";
        return false;
    }
    return std::setlocale(LC_ALL, name) != nullptr;
}

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (!setLocaleFromEnvironment()) return 1;
    return RUN_ALL_TESTS();
}
