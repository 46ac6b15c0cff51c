// SPDX-License-Identifier: MIT
// A class that stands in a source file of its own.
#include <db/zvdbdatabase.h>
#include <zvmonitorglobaluisystemvarreactor.h>
#include <zvqtcontrolhelp.h>

#include <QLabel>

// the code
