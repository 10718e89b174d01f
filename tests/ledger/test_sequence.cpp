#include "ledger/Sequence.h"

#include "support/Fixture.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(Sequence, WalksQuantitiesInDateOrderWithExactCodes)
{
    ProgramFolder folder;
    store::Database exe;
    exe.Open(folder.NewPortfolio());
    EXPECT_EQ(ledger::ControlloSequenza(exe), "");

    AddTrade(exe, "10/01/2003", "Buy", "DAY", "ENI", 100, 1);
    AddTrade(exe, "11/01/2003", "Sell", "DAY", "ENI", 100, 1);
    AddTrade(exe, "12/01/2003", "buy", "DAY", "ENI", 50, 1);
    AddTrade(exe, "13/01/2003", "Sell", "DAY", "ENI", 20, 1);
    EXPECT_EQ(ledger::ControlloSequenza(exe), "");

    // Case counts here, while the replay's look-up ignores it: a sale of "eni" finds no "ENI",
    AddTrade(exe, "14/01/2003", "Sell", "DAY", "eni", 1, 1);
    EXPECT_EQ(ledger::ControlloSequenza(exe), "eni non e' in portafoglio in data: 14/01/2003");
    exe.Execute("DELETE * FROM Eseguiti WHERE ID > 4");
    // and the pieces bought as "Eni" don't help a sale of "ENI".
    AddTrade(exe, "14/01/2003", "Buy", "DAY", "Eni", 40, 1);
    AddTrade(exe, "14/01/2003", "Sell", "DAY", "ENI", 31, 1);
    EXPECT_EQ(ledger::ControlloSequenza(exe), "ENI disponibili solo 30 pezzi");
    exe.Execute("DELETE * FROM Eseguiti WHERE ID > 4");

    // A sold-out code keeps its slot at 0.
    AddTrade(exe, "15/01/2003", "Sell", "DAY", "ENI", 30, 1);
    AddTrade(exe, "16/01/2003", "Sell", "DAY", "ENI", 1, 1);
    EXPECT_EQ(ledger::ControlloSequenza(exe), "ENI disponibili solo 0 pezzi");

    // A sale before its buy on the same date, in record order.
    exe.Execute("DELETE * FROM Eseguiti");
    AddTrade(exe, "10/01/2003", "Sell", "DAY", "FIAT", 5, 1);
    AddTrade(exe, "10/01/2003", "Buy", "DAY", "FIAT", 5, 1);
    EXPECT_EQ(ledger::ControlloSequenza(exe), "FIAT non e' in portafoglio in data: 10/01/2003");

    // A blank code is slot 0: it never takes a slot of its own.
    exe.Execute("DELETE * FROM Eseguiti");
    AddTrade(exe, "10/01/2003", "Buy", "DAY", "", 5, 1);
    AddTrade(exe, "11/01/2003", "Sell", "DAY", "", 5, 1);
    // 100 distinct codes pass, the 101st fails, even when every earlier one is sold out.
    for (int i = 1; i <= 100; ++i)
        AddTrade(exe, "12/01/2003", "Buy", "DAY", QString("C%1").arg(i), 1, 1);
    for (int i = 1; i <= 100; ++i)
        AddTrade(exe, "13/01/2003", "Sell", "DAY", QString("C%1").arg(i), 1, 1);
    EXPECT_EQ(ledger::ControlloSequenza(exe), "");
    AddTrade(exe, "14/01/2003", "Buy", "DAY", "C101", 1, 1);
    EXPECT_THROW(ledger::ControlloSequenza(exe), platform::IndexOutOfRange);
}
