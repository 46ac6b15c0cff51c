// SPDX-License-Identifier: MIT
#include "corefixture.h"

#include "core/zvui.h"

namespace {

int s_alive = 0;
int s_activeInside = -1;

/// A dialog of a program's own, to show what callers of the kernel get.
class Question : public ZvUiModeDialogBase
{
public:
    Question() { ++s_alive; }
    ~Question() override { --s_alive; }
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr) override
    {
        m_params = params;
        return !m_params.isNull() && !m_params->hasKey("refuse");
    }
    bool freshAndActive(ZvJsonPtr) override { return true; }
    void *getDlg() override { return nullptr; }
    ZvJsonPtr getResult() override { return m_result; }
    int doModal() override
    {
        ZvResBuf active;
        zvedGetVar("CMDACTIVE", &active);
        s_activeInside = active.resval.rint;
        m_params->SetDataI("ControlBtn", 6);
        m_result->SetDataI("result", 1);
        return 1;
    }
    void endDialog(int) override { }
    void beginEditorCommand() override { }
    void cancelEditorCommand() override { }
    void completeEditorCommand(bool) override { }
    bool exchangeData(bool) override { return true; }
    void onFinalDeconstruct() override { }
    void hide() override { }
    void show() override { }
    void onCancel() override { }
    void onOk() override { }

private:
    ZvJsonPtr m_params;
    ZvJsonPtr m_result = ElementValue::createObject(2);
};

class Service : public ZvUiService
{
public:
    ZvUiDialogBasePtr createDialog(const ZvString &name, void *) override
    {
        if (name.compareNoCase("MessageBox") != 0)
            return nullptr;
        return ZvUiDialogBasePtr::adopt(new ZvRxObjectImpl<Question>);
    }
};

class DialogTest : public CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        zv_arbitDict_regservice("Dialog/Common", ZvRxObjectPtr::adopt(new ZvRxObjectImpl<Service>));
    }
    void TearDown() override
    {
        zv_arbitDict_clearservice("Dialog/Common");
        EXPECT_EQ(s_alive, 0);
        CoreTest::TearDown();
    }
};

int answerSeven(const ZvString &, const ZvString &, unsigned)
{
    return 7;
}

}

TEST_F(DialogTest, showModelDialogGivesTheResultTree)
{
    const ZvJsonPtr params = ElementValue::createObject(2);
    const ZvJsonPtr result = zvuiShowModelDialogEx("Dialog/Common", "messagebox", params, nullptr, nullptr);
    EXPECT_EQ(result->member("result")->asInteger(), 1);
    EXPECT_EQ(params->member("ControlBtn")->asInteger(), 6);
    EXPECT_EQ(s_alive, 0);
}

TEST_F(DialogTest, aRunningDialogShowsInCmdactive)
{
    zvuiShowModelDialogEx("Dialog/Common", "MessageBox", ElementValue::createObject(2), nullptr, nullptr);
    EXPECT_EQ(s_activeInside, 8);
}

TEST_F(DialogTest, noDialogGivesAnEmptyResult)
{
    EXPECT_FALSE(zvuiShowModelDialogEx("Dialog/Common", "NoSuch", ElementValue::createObject(2), nullptr, nullptr)->hasKey("result"));
    EXPECT_FALSE(zvuiShowModelDialogEx("No/Service", "MessageBox", ElementValue::createObject(2), nullptr, nullptr)->hasKey("result"));
    const ZvJsonPtr refused = ElementValue::createObject(2);
    refused->SetDataB("refuse", true);
    EXPECT_FALSE(zvuiShowModelDialogEx("Dialog/Common", "MessageBox", refused, nullptr, nullptr)->hasKey("result"));
}

TEST_F(DialogTest, messageBoxExGivesTheParameterTree)
{
    const ZvJsonPtr params = ElementValue::createObject(2);
    params->SetDataSW("btnText/0", "关闭(&C)");
    const ZvJsonPtr answers = zvuiMessageBoxEx("title", "message", params, 6, 1, 48);
    EXPECT_EQ(answers.get(), params.get());
    EXPECT_EQ(answers->member("ControlBtn")->asInteger(), 6);
    EXPECT_EQ(answers->member("title")->asString(), ZvUtf8String("title"));
    EXPECT_EQ(answers->member("msg")->asString(), ZvUtf8String("message"));
    EXPECT_EQ(answers->member("flag")->asInteger(), 6);
    EXPECT_EQ(answers->member("contentFlag")->asInteger(), 1);
    EXPECT_EQ(answers->member("dlgtype")->asInteger(), 48);
    zv_arbitDict_clearservice("Dialog/Common");
    EXPECT_FALSE(zvuiMessageBoxEx("t", "m", nullptr, 0, 1, 0)->hasKey("ControlBtn"));
}

TEST_F(DialogTest, messageBoxAsksYesOrNo)
{
    EXPECT_EQ(ZvUiMessageBox("Sure?", "Zevara", 68), 6);
    EXPECT_EQ(ZvUiMessageBox("So it is.", "Zevara", 64), 1);
    zvuiSetMessageBoxHook(answerSeven);
    EXPECT_EQ(ZvUiMessageBox("Sure?", "Zevara", 68), 7);
    zvuiSetMessageBoxHook(nullptr);
    zv_arbitDict_clearservice("Dialog/Common");
    EXPECT_EQ(ZvUiMessageBox("Sure?", "Zevara", 68), 0);
}

TEST_F(DialogTest, withoutAHostThereIsNoWindow)
{
    EXPECT_EQ(zvuiMainWindow(), nullptr);
    EXPECT_EQ(zvuiSetCursor(nullptr, 256), 256);
}
