#pragma once

#include "app/shared/sharedfonts.h"
#include "forgottenboxes.h"
#include "resources/resources.h"
#include "widgets.h"

/// The main function of a test of pages or windows: with the program's own resources and fonts.
#define PAGE_TEST_MAIN(TestClass)                                                                                      \
    int main(int argc, char **argv) {                                                                                  \
        QApplication application(argc, argv);                                                                          \
        QCoreApplication::setAttribute(Qt::AA_Use96Dpi);                                                               \
        loadResources();                                                                                               \
        registerEmbeddedFonts();                                                                                       \
        const ForgottenBoxes forgottenBoxes;                                                                           \
        TestClass test;                                                                                                \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
