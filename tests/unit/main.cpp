#include "runtime/Runtime.h"
#include "app/Program.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    rt::setTwipsPerPixel(15);
    wizard::registerForms();
    wizard::installStoreHooks();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
