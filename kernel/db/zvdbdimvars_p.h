// SPDX-License-Identifier: MIT
#ifndef ZVDBDIMVARS_P_H
#define ZVDBDIMVARS_P_H

/// A dimension variable: its name without "$", and its group code in the record of a dimension style.
struct ZvDbDimVariable
{
    enum Type { kReal, kInteger, kText, kId };
    const char *name;
    Type type;
    int code;
    double standard; ///< What a style that says nothing means.
    double metric; ///< What new metric drawings begin with.
};

/// All of them, in the order of the codes in a record.
const ZvDbDimVariable *zvdbDimVariables(int &count);
/// Null for a name that is none, and for null; case ignored.
const ZvDbDimVariable *zvdbDimVariable(const char *name);

#endif
