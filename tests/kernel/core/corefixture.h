// SPDX-License-Identifier: MIT
#ifndef COREFIXTURE_H
#define COREFIXTURE_H

#include "core/zvapdocument.h"
#include "core/zvedvars.h"
#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

/// Writes down what the editor tells.
class EditorLog : public ZvStaticRxObject<ZvEditorReactor>
{
public:
    void commandWillStart(const ZvString &name) override { add("start", name); }
    void commandEnded(const ZvString &name) override { add("end", name); }
    void commandCancelled(const ZvString &name) override { add("cancel", name); }
    void commandFailed(const ZvString &name) override { add("fail", name); }
    void sysVarChanged(const ZvString &name, bool success) override
    {
        add(success ? "var" : "refused", name);
    }
    void pickfirstModified() override { lines.emplace_back("pickfirst"); }
    void layoutSwitched(const ZvString &name) override { add("layout", name); }

    bool has(const std::string &line) const { return std::find(lines.begin(), lines.end(), line) != lines.end(); }
    std::vector<std::string> lines;

private:
    void add(const std::string &what, const ZvString &name) { lines.push_back(what + " " + name.toStdString()); }
};

/// A host that answers from lists and writes down what it is asked.
class TestHost : public ZvEdHost
{
public:
    void queueFilled() override { ++filled; }
    bool waitForInput(const ZvEdPrompt &prompt) override
    {
        prompts.push_back(prompt.text.toStdString());
        if (answers.empty())
            return false;
        const std::string answer = answers.front();
        answers.erase(answers.begin());
        zvedCommandLine(ZvString(answer.c_str()));
        return true;
    }
    void print(const ZvString &text) override { history.push_back(text.toStdString()); }
    void changeView(const ViewRequest &request) override { views.push_back(request); }
    void pick(const ZvGePoint3d &, std::vector<ZvDbObjectId> &ids) override { ids = picked; }
    void pickWindow(const ZvGePoint3d &, const ZvGePoint3d &, bool, std::vector<ZvDbObjectId> &ids) override { ids = picked; }
    bool currentView(ViewState &state) override
    {
        state.width = 20.0;
        state.height = 10.0;
        state.center = {5.0, 6.0};
        return true;
    }
    ZvString askFileName(bool, const ZvString &) override { return fileName; }
    bool mayClose(ZvApDocument *) override { return closing; }
    ZvDbProgress *beginProgress(const ZvString &) override { return nullptr; }
    void endProgress() override { }
    void showFileReport(const ZvString &, const ZvDbFileReport &report) override
    {
        reports.push_back(report.message.toStdString());
    }
    void quit() override { ++quits; }

    int filled = 0;
    int quits = 0;
    bool closing = true;
    ZvString fileName;
    std::vector<std::string> answers;
    std::vector<std::string> prompts;
    std::vector<std::string> history;
    std::vector<std::string> reports;
    std::vector<ViewRequest> views;
    std::vector<ZvDbObjectId> picked;
};

/// Runs a macro to its end; the text of what failed, empty when nothing did.
inline std::string runMacro(const char *macro)
{
    zvedMenuMacro(ZvString(macro), false);
    ZvString error;
    zvedRunQueue(&error);
    return error.toStdString();
}

/// A running core with one empty drawing and a log of the editor. At the end nothing may be open.
class CoreTest : public testing::Test
{
protected:
    void SetUp() override
    {
        CHcSystem::start();
        zvedEditor()->addReactor(&log);
        document = zvDocManagerPtr()->newDocument();
        database = document->database();
        log.lines.clear();
    }
    void TearDown() override
    {
        zvedSetHost(nullptr);
        EXPECT_EQ(zvdbOpenObjectCount(), 0);
        zvedEditor()->removeReactor(&log);
        CHcSystem::stop();
    }
    std::string run(const char *macro) { return runMacro(macro); }
    int entityCount() const { return database->entityCount(); }
    ZvDbObjectId entity(int index) const
    {
        const ZvDbObjectPointer<ZvDbBlockTableRecord> space(database->currentSpaceId(), ZvDb::kForRead);
        ZvDbBlockTableRecordIterator *iterator = nullptr;
        space->newIterator(iterator);
        for (int i = 0; i < index && !iterator->done(); ++i)
            iterator->step();
        const ZvDbObjectId id = iterator->done() ? ZvDbObjectId() : iterator->entityId();
        delete iterator;
        return id;
    }
    ZvDbObjectId layer(const char *name) const
    {
        const ZvDbObjectPointer<ZvDbLayerTable> table(database->layerTableId(), ZvDb::kForRead);
        return table->getIdAt(ZvString(name));
    }
    ZvEdSelectionHolder &selection() const { return *document->editingContext()->selectionHolder(); }

    EditorLog log;
    ZvApDocument *document = nullptr;
    ZvDbDatabase *database = nullptr;
};

#endif
