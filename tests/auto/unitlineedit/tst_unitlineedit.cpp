// SPDX-License-Identifier: MIT
#include "zevatest.h"
#include "zvunitlineedit.h"

#include <QRegExp>
#include <QRegExpValidator>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QVector>

namespace {

const QString kWithdrawn = QStringLiteral("code was cleared, please use ODA func");

/// A host's field, which sets the unit.
class HostField : public ZvUnitLineEdit
{
public:
    using ZvUnitLineEdit::ZvUnitLineEdit;
    void setUnit(EngineeringUnits unit) { m_units = unit; }
    /// In the order in which they stand.
    QVector<int> numbers() const { return {m_reservedFirst, m_units, m_reservedSecond, m_reservedThird}; }
};

/// A field and another widget to give the keyboard to.
struct Form
{
    Form()
    {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(field = new HostField(&window));
        column->addWidget(other = new QLineEdit(&window));
        window.show();
        isActive = zevaWaitForActive(&window);
        field->setFocus();
    }

    QWidget window;
    HostField *field;
    QLineEdit *other;
    bool isActive;
};

} // namespace

class TestUnitLineEdit : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void startsEmptyOrWithItsText();
    void inputsAreJudged_data();
    void inputsAreJudged();
    void typedLettersAreRefused_data();
    void typedLettersAreRefused();
    void validatorIsTheFieldsChild();
    void valueIsKeptAndShownInTheUnit_data();
    void valueIsKeptAndShownInTheUnit();
    void typedTextBecomesTheValueWithTheKeyboardLost();
    void returnLeavesTheValue();
    void losingTheKeyboardIsReturn_data();
    void losingTheKeyboardIsReturn();
    void gettingTheKeyboardChangesNothing();
    void leavingInAnotherUnitKeepsTheLineAsValue();
    void unitsChangedIsTheHosts();
};

void TestUnitLineEdit::startsEmptyOrWithItsText()
{
    const ZvUnitLineEdit empty(nullptr);
    QCOMPARE(empty.text(), QString());
    QCOMPARE(empty.QLineEdit::text(), QString());
    const ZvUnitLineEdit field(QStringLiteral("3.5"), nullptr);
    QCOMPARE(field.text(), QStringLiteral("3.5"));
    QCOMPARE(field.QLineEdit::text(), QStringLiteral("3.5"));
    const HostField host(nullptr);
    QCOMPARE(host.numbers(), QVector<int>({0, 0, 0, 6}));
}

void TestUnitLineEdit::inputsAreJudged_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<int>("state");
    const int refused = QValidator::Invalid;
    const int unfinished = QValidator::Intermediate;
    const int accepted = QValidator::Acceptable;
    QTest::newRow("-12. passes") << "-12." << accepted;
    QTest::newRow("3.5 passes") << "3.5" << accepted;
    QTest::newRow(".5 does not") << ".5" << refused;
    QTest::newRow("1e3 does not") << "1e3" << refused;
    QTest::newRow("1E3 does not") << "1E3" << refused;
    QTest::newRow("a whole number") << "42" << accepted;
    QTest::newRow("leading zeros") << "007" << accepted;
    QTest::newRow("a minus sign alone is unfinished") << "-" << unfinished;
    QTest::newRow("nothing is unfinished") << "" << unfinished;
    QTest::newRow("a plus sign") << "+1" << refused;
    QTest::newRow("two minus signs") << "--1" << refused;
    QTest::newRow("a minus sign behind") << "1-" << refused;
    QTest::newRow("two points") << "1.2.3" << refused;
    QTest::newRow("a comma") << "1,5" << refused;
    QTest::newRow("a blank before") << " 1" << refused;
    QTest::newRow("a blank behind") << "1 " << refused;
}

void TestUnitLineEdit::inputsAreJudged()
{
    QFETCH(QString, input);
    QFETCH(int, state);
    const ZvUnitLineEdit field(nullptr);
    int cursor = 0;
    QCOMPARE(int(field.validator()->validate(input, cursor)), state);
}

void TestUnitLineEdit::typedLettersAreRefused_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a number") << "-12.5"
                              << "-12.5";
    QTest::newRow("a point first") << ".5"
                                   << "5";
    QTest::newRow("an exponent") << "1e3"
                                 << "13";
    QTest::newRow("a second point") << "1.2.3"
                                    << "1.23";
    QTest::newRow("words") << "one"
                           << "";
}

void TestUnitLineEdit::typedLettersAreRefused()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    Form form;
    QVERIFY(form.isActive);
    QTest::keyClicks(form.field, typed);
    QCOMPARE(form.field->QLineEdit::text(), shown);
}

void TestUnitLineEdit::validatorIsTheFieldsChild()
{
    const ZvUnitLineEdit field(nullptr);
    QCOMPARE(field.validator()->parent(), &field);
    const auto *validator = qobject_cast<const QRegExpValidator *>(field.validator());
    QVERIFY(validator);
    QCOMPARE(validator->regExp().pattern(), QStringLiteral("^(-?\\d+)(\\.\\d*)?$"));
    QCOMPARE(validator->regExp().caseSensitivity(), Qt::CaseSensitive);
}

void TestUnitLineEdit::valueIsKeptAndShownInTheUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("unit 0 shows the value") << 0 << "3.50"
                                            << "3.50";
    QTest::newRow("unit 0 shows what is no number") << 0 << "abc"
                                                    << "abc";
    QTest::newRow("unit 0 shows nothing") << 0 << ""
                                          << "";
    QTest::newRow("unit 1") << 1 << "3.5" << kWithdrawn;
    QTest::newRow("unit 2") << 2 << "3.5" << kWithdrawn;
    QTest::newRow("unit 3") << 3 << "3.5" << kWithdrawn;
    QTest::newRow("unit 3 without a value") << 3 << "" << kWithdrawn;
    QTest::newRow("unit 1 with what is no number") << 1 << "abc" << kWithdrawn;
    QTest::newRow("a unit that is none") << 99 << "3.5" << kWithdrawn;
    QTest::newRow("a negative unit") << -1 << "3.5" << kWithdrawn;
}

void TestUnitLineEdit::valueIsKeptAndShownInTheUnit()
{
    QFETCH(int, unit);
    QFETCH(QString, value);
    QFETCH(QString, shown);
    HostField field(nullptr);
    const auto asUnit = ZvUnitLineEdit::EngineeringUnits(unit);
    field.setUnit(asUnit);
    field.setText(value);
    QCOMPARE(field.text(), value);
    QCOMPARE(field.QLineEdit::text(), shown);
    QCOMPARE(field.Conver2EngineeringUnits(asUnit), shown);
    QCOMPARE(field.Conver2EngineeringUnits(ZvUnitLineEdit::kUnitAsGiven), value);
}

void TestUnitLineEdit::typedTextBecomesTheValueWithTheKeyboardLost()
{
    Form form;
    QVERIFY(form.isActive);
    form.field->setText(QStringLiteral("1"));
    form.field->selectAll();
    QTest::keyClicks(form.field, QStringLiteral("25"));
    QCOMPARE(form.field->text(), QStringLiteral("1"));
    QTest::keyClick(form.field, Qt::Key_Tab);
    QVERIFY(form.other->hasFocus());
    QCOMPARE(form.field->text(), QStringLiteral("25"));
    QCOMPARE(form.field->QLineEdit::text(), QStringLiteral("25"));
}

void TestUnitLineEdit::returnLeavesTheValue()
{
    Form form;
    QVERIFY(form.isActive);
    const QSignalSpy returned(form.field, &QLineEdit::returnPressed);
    QTest::keyClicks(form.field, QStringLiteral("25"));
    QTest::keyClick(form.field, Qt::Key_Return);
    QCOMPARE(returned.size(), 1);
    QCOMPARE(form.field->text(), QString());
}

void TestUnitLineEdit::losingTheKeyboardIsReturn_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("finished"); // editingFinished() needs a number, Return does not here
    QTest::newRow("a number") << "12" << 1;
    QTest::newRow("an unfinished number") << "-" << 0;
    QTest::newRow("nothing") << "" << 0;
}

void TestUnitLineEdit::losingTheKeyboardIsReturn()
{
    QFETCH(QString, typed);
    QFETCH(int, finished);
    Form form;
    QVERIFY(form.isActive);
    QString valueAtReturn = QStringLiteral("never");
    // What QLineEdit itself does comes first: its signal finds the value as it was.
    connect(form.field, &QLineEdit::editingFinished, form.field, [&] { QCOMPARE(form.field->text(), QString()); });
    connect(form.field, &QLineEdit::returnPressed, form.field, [&] { valueAtReturn = form.field->text(); });
    const QSignalSpy returned(form.field, &QLineEdit::returnPressed);
    const QSignalSpy edited(form.field, &QLineEdit::editingFinished);
    QTest::keyClicks(form.field, typed);
    QCOMPARE(returned.size(), 0);
    form.other->setFocus();
    QCOMPARE(returned.size(), 1);
    QCOMPARE(edited.size(), finished);
    QCOMPARE(valueAtReturn, typed);
}

void TestUnitLineEdit::gettingTheKeyboardChangesNothing()
{
    Form form;
    QVERIFY(form.isActive);
    form.other->setFocus();
    form.field->setText(QStringLiteral("7"));
    const QSignalSpy returned(form.field, &QLineEdit::returnPressed);
    const QSignalSpy changed(form.field, &QLineEdit::textChanged);
    form.field->setFocus(Qt::TabFocusReason);
    QVERIFY(form.field->hasFocus());
    QCOMPARE(form.field->selectedText(), QStringLiteral("7")); // as the base does
    QCOMPARE(returned.size(), 0);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(form.field->text(), QStringLiteral("7"));
}

void TestUnitLineEdit::leavingInAnotherUnitKeepsTheLineAsValue()
{
    Form form;
    QVERIFY(form.isActive);
    form.field->setUnit(ZvUnitLineEdit::kUnitOne);
    form.field->setText(QStringLiteral("3.5"));
    form.other->setFocus();
    QCOMPARE(form.field->text(), kWithdrawn);
    QCOMPARE(form.field->QLineEdit::text(), kWithdrawn);
}

void TestUnitLineEdit::unitsChangedIsTheHosts()
{
    HostField field(nullptr);
    QVector<int> told;
    connect(&field, &ZvUnitLineEdit::UnitsChanged, &field, [&told](int unit) { told << unit; });
    field.setText(QStringLiteral("1"));
    field.Conver2EngineeringUnits(ZvUnitLineEdit::kUnitTwo);
    QCOMPARE(told, QVector<int>());
    Q_EMIT field.UnitsChanged(ZvUnitLineEdit::kUnitTwo);
    QCOMPARE(told, QVector<int>{2});
    // Found by the form in which hosts connect by name.
    QVERIFY(field.metaObject()->indexOfSignal("UnitsChanged(EngineeringUnits)") >= 0);
}

ZEVA_TEST_MAIN(TestUnitLineEdit)
#include "tst_unitlineedit.moc"
