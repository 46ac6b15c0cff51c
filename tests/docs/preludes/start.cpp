// SPDX-License-Identifier: MIT
// A piece of main(), behind the application object.
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

[[maybe_unused]] static void start()
{
    // the code
}
