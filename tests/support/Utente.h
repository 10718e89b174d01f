#pragma once
// What a user does with the mouse and the keyboard, for window tests.
#include <QAbstractButton>
#include <QDateEdit>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace testing_support {

// A click where the user clicks: on an option button's circle, on a button's middle.
inline void Clicca(QAbstractButton* b)
{
    ASSERT_NE(b, nullptr);
    ASSERT_TRUE(b->isEnabled()) << b->objectName().toStdString();
    const QPoint at = qobject_cast<QRadioButton*>(b) ? QPoint(8, b->height() / 2) : b->rect().center();
    QTest::mouseClick(b, Qt::LeftButton, {}, at);
}

// Selects all of a text box and types over it (an empty text deletes it).
inline void Scrivi(QLineEdit* e, const QString& text)
{
    ASSERT_NE(e, nullptr);
    QTest::mouseClick(e, Qt::LeftButton);
    QTest::keyClick(e, Qt::Key_Home);
    QTest::keyClick(e, Qt::Key_End, Qt::ShiftModifier);
    QTest::keyClick(e, Qt::Key_Backspace);
    QTest::keyClicks(e, text);
}

// Types a date dd/mm/yyyy into a date picker: the day selected, then the digits alone,
// since the picker moves on to the next section by itself.
inline void ScriviData(QDateEdit* e, const QString& text)
{
    ASSERT_NE(e, nullptr);
    QTest::mouseClick(e, Qt::LeftButton, {}, QPoint(6, e->height() / 2));
    QTest::keyClick(e, Qt::Key_Home);
    QTest::keyClick(e, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(e, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClicks(e, QString(text).remove('/'));
    ASSERT_EQ(e->date().toString(QStringLiteral("dd/MM/yyyy")), text);
}

// A click on a row of a grid.
inline void ClickRiga(QTableView* grid, int row, int column = 0)
{
    ASSERT_NE(grid, nullptr);
    const QRect r = grid->visualRect(grid->model()->index(row, column));
    ASSERT_TRUE(r.isValid()) << "row " << row << " is not on screen";
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, r.center());
}

} // namespace testing_support
