// SPDX-License-Identifier: MIT
#ifndef COLORDIALOGANSWER_H
#define COLORDIALOGANSWER_H

#include "dialogbag.h"
#include "dialogstandin.h"

#include <QStringList>

/// A colour dialog of the host's in the place of the library's: the next one that a control asks for is not shown, but
/// notes what it was asked for and answers at once.
class ColorDialogAnswer
{
public:
    /// What it was asked for.
    struct Asked
    {
        ZvString name;
        void *parent = nullptr;
        bool hasHelper = false;
        QStringList params; ///< Each as "key=number", in the order of their writing.
    };

    /// With \a result 0 it answers nothing at all.
    ColorDialogAnswer(int result, int method, int value)
        : m_standIn([=](const ZvJsonPtr &params) {
              note(params);
              if (result != 0) {
                  params->SetDataI("clrMethod", method);
                  params->SetDataI("selectClr", value);
              }
              return result;
          })
    {
    }
    ColorDialogAnswer(const ColorDialogAnswer &) = delete;
    ColorDialogAnswer &operator=(const ColorDialogAnswer &) = delete;

    Asked asked;

private:
    void note(const ZvJsonPtr &params)
    {
        asked.name = m_standIn.name();
        asked.parent = m_standIn.parent();
        asked.hasHelper = m_standIn.hasHelper();
        for (int i = 0; i < params->elementCount(); ++i)
            asked.params << QStringLiteral("%1=%2")
                                .arg(QString::fromUtf8(params->keyAt(i).c_str()))
                                .arg(params->element(i)->asInteger());
    }

    DialogStandIn m_standIn;
};

#endif
