// SPDX-License-Identifier: MIT
#ifndef ZVFILES_H
#define ZVFILES_H

#include "base/zvarray.h"
#include "base/zvjson.h"
#include "base/zvstring.h"

/// Folder of the executable, without "/" at the end.
ZV_EXPORT ZvUtf8String zvsiutGetExePath();
/// Joins with one "/"; a "/" at the end of \a b stays.
ZV_EXPORT ZvUtf8String zvutCombinePath(const ZvUtf8String &a, const ZvUtf8String &b);
/// Without folder and last extension.
ZV_EXPORT ZvString zvutGetFileNoExtName(const ZvString &path);
/// Last component; empty for a path that ends in "/".
ZV_EXPORT ZvUtf8String zvutGetFileName(const ZvUtf8String &path);
ZV_EXPORT ZvString zvutGetFileName(const ZvString &path);
/// Bare file name, also of a path with "\" between its parts.
ZV_EXPORT ZvString zvutGetLastFileNameInPath(const ZvString &path);
/// True for an existing file that is no folder.
ZV_EXPORT bool zvutIsExistFile(const ZvUtf8String &path);
/// Mode 2 asks whether the file, or for a missing one its folder, may be written; 4 read, 0 existence. Non-zero is
/// yes: the reverse of the C library's.
ZV_EXPORT int zvutAccessFile(const ZvString &path, int mode);
/// Whether the system can store a file of that path: components of 1 to 255 bytes, at most 4095 bytes in all, no zero.
ZV_EXPORT bool zvutIsValidFilePathName(const ZvUtf8String &path);
/// True for an existing folder.
ZV_EXPORT bool isDir(const ZvUtf8String &path);
/// 0 for a missing file.
ZV_EXPORT long long zvutGetFileSize(const ZvUtf8String &path);
/// Login name of the user; empty where it cannot be found.
ZV_EXPORT ZvUtf8String zvutGetUserName();
/// Without "/" at the end.
ZV_EXPORT ZvUtf8String zvutGetHomeDir();
/// Runs a command by the shell and collects what it prints. Waits at most 2 seconds and takes at most 1 MiB, then ends
/// the command with its children, and does not wait for one that cannot be ended. Failure: false and an empty output.
ZV_EXPORT bool zvutPipeCmd(const ZvUtf8String &command, ZvUtf8String &output);
/// Plot style table files in the folders of the settings ("paths/plotStylePaths"): ".ctb" with \a byColor, else ".stb",
/// as full paths sorted by name. The last argument is null.
ZV_EXPORT void zvsiutGetAllPlotStyleFiles(ZvArray<ZvString> &files, bool byColor, void *reserved);

#endif
