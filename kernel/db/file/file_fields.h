// SPDX-License-Identifier: MIT
#ifndef FILE_FIELDS_H
#define FILE_FIELDS_H

/// Degrees of a file as radians. One formula everywhere: an angle that was not changed has to compare equal.
inline double zvdbRadians(double degrees)
{
    return degrees * 3.14159265358979323846 / 180.0;
}

#endif
