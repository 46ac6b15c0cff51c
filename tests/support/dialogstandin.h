// SPDX-License-Identifier: MIT
#ifndef DIALOGSTANDIN_H
#define DIALOGSTANDIN_H

#include "modulesession.h"
#include "zevaqt.h"

#include <functional>
#include <utility>

/// A host's own dialog in place of the next one that is asked of "Dialog/Common". It has no window: the answer comes at
/// once. For what a dialog is asked, and for answers that the library's own dialogs never give. The library's service
/// is back from then on, since what controls write travels through it.
class DialogStandIn
{
public:
    /// Reads and changes the parameters as the dialog would. What it returns is the result; 0 leaves none.
    typedef std::function<int(const ZvJsonPtr &params)> Answer;

    explicit DialogStandIn(Answer answer) : m_answer(std::move(answer)), m_own(ModuleSession::dialogService())
    {
        zv_arbitDict_regservice(kServiceName, ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Service>(*this)));
    }
    ~DialogStandIn() { giveBack(); }
    DialogStandIn(const DialogStandIn &) = delete;
    DialogStandIn &operator=(const DialogStandIn &) = delete;

    /// What was asked for; empty before.
    const ZvString &name() const { return m_name; }
    void *parent() const { return m_parent; }
    bool hasHelper() const { return m_hasHelper; }

private:
    static constexpr const wchar_t *kServiceName = L"Dialog/Common";

    class Dialog : public ZvQtUIModeDialogBase
    {
    public:
        explicit Dialog(DialogStandIn &standIn) : m_standIn(standIn) { }
        int doModal() override
        {
            m_standIn.giveBack();
            m_standIn.m_hasHelper = !m_pHelper.isNull();
            const int result = m_standIn.m_answer(m_pParams);
            if (result == 0)
                return kDialogUndecided;
            m_pResult->SetDataI("result", result);
            return result;
        }

    private:
        DialogStandIn &m_standIn;
    };

    class Service : public ZvUiService
    {
    public:
        explicit Service(DialogStandIn &standIn) : m_standIn(standIn) { }
        ZvUiDialogBasePtr createDialog(const ZvString &name, void *parent) override
        {
            m_standIn.m_name = name;
            m_standIn.m_parent = parent;
            return ZvUiDialogBasePtr::adopt(new ZvQtRxObjectImpl<Dialog>(m_standIn));
        }

    private:
        DialogStandIn &m_standIn;
    };

    void giveBack()
    {
        if (!m_own.isNull())
            zv_arbitDict_regservice(kServiceName, m_own);
        m_own = nullptr;
    }

    const Answer m_answer;
    ZvRxObjectPtr m_own;
    ZvString m_name;
    void *m_parent = nullptr;
    bool m_hasHelper = false;
};

#endif
