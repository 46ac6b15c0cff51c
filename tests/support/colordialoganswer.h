// SPDX-License-Identifier: MIT
#ifndef COLORDIALOGANSWER_H
#define COLORDIALOGANSWER_H

#include "dialogbag.h"
#include "modulesession.h"
#include "zevaqt.h"

#include <QStringList>

/// A colour dialog of the host's in the place of the library's: the next one that a control asks for is not shown, but
/// notes what it was asked for and answers at once. The library's service is back from then on, since what controls
/// write travels through it.
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
        : m_result(result), m_method(method), m_value(value), m_own(ModuleSession::dialogService())
    {
        zv_arbitDict_regservice(kServiceName, ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Service>(*this)));
    }
    ~ColorDialogAnswer() { giveBack(); }
    ColorDialogAnswer(const ColorDialogAnswer &) = delete;
    ColorDialogAnswer &operator=(const ColorDialogAnswer &) = delete;

    Asked asked;

private:
    static constexpr const wchar_t *kServiceName = L"Dialog/Common";

    class Dialog : public ZvQtUIModeDialogBase
    {
    public:
        explicit Dialog(ColorDialogAnswer &answer) : m_answer(answer) { }
        int doModal() override
        {
            m_answer.giveBack();
            m_answer.asked.hasHelper = !m_pHelper.isNull();
            for (int i = 0; i < m_pParams->elementCount(); ++i)
                m_answer.asked.params << QStringLiteral("%1=%2")
                                             .arg(QString::fromUtf8(m_pParams->keyAt(i).c_str()))
                                             .arg(m_pParams->element(i)->asInteger());
            if (m_answer.m_result == 0)
                return kDialogUndecided;
            m_pParams->SetDataI("clrMethod", m_answer.m_method);
            m_pParams->SetDataI("selectClr", m_answer.m_value);
            m_pResult->SetDataI("result", m_answer.m_result);
            return m_answer.m_result;
        }

    private:
        ColorDialogAnswer &m_answer;
    };

    class Service : public ZvUiService
    {
    public:
        explicit Service(ColorDialogAnswer &answer) : m_answer(answer) { }
        ZvUiDialogBasePtr createDialog(const ZvString &name, void *parent) override
        {
            m_answer.asked.name = name;
            m_answer.asked.parent = parent;
            return ZvUiDialogBasePtr::adopt(new ZvQtRxObjectImpl<Dialog>(m_answer));
        }

    private:
        ColorDialogAnswer &m_answer;
    };

    void giveBack()
    {
        if (!m_own.isNull())
            zv_arbitDict_regservice(kServiceName, m_own);
        m_own = nullptr;
    }

    int m_result;
    int m_method;
    int m_value;
    ZvRxObjectPtr m_own;
};

#endif
