// main() of the widget tests. GoogleTest lists the tests by running the program with
// --gtest_list_tests and without the test's environment, so no application object may be
// made then: it would need a display.
#include <QApplication>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

int main(int argc, char** argv) {
    bool listing = false;
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--gtest_list_tests") == 0) listing = true;
    ::testing::InitGoogleTest(&argc, argv);
    if (listing) return RUN_ALL_TESTS();
    if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
