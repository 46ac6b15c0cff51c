// SPDX-License-Identifier: MIT
#ifndef WHOLEFILE_H
#define WHOLEFILE_H

#include <QByteArray>
#include <QSaveFile>

/// Writes the bytes and gives the file its name; otherwise what stood there before stays. \a file is open.
///
/// In one piece and with flush(): QSaveFile forgets a full disk that shows itself when its buffer is written out late.
inline bool writeWhole(QSaveFile &file, const QByteArray &bytes)
{
    return file.write(bytes) == bytes.size() && file.flush() && file.commit();
}

#endif
