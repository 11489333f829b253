#pragma once

#include <QApplication>

namespace vexto::test {

// The one QApplication of the Qt test program, made by the first suite that needs it.
inline void ensureQApplication()
{
    static int argc = 1;
    static char name[] = "vexto_qt_tests";
    static char* argv[] = {name, nullptr};
    if (QApplication::instance() == nullptr) {
        new QApplication(argc, argv);
    }
}

} // namespace vexto::test
