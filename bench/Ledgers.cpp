#include "Ledgers.h"

#include "platform/Numbers.h"
#include "store/Delivered.h"

#include <QDate>

#include <random>
#include <vector>

namespace bench {

void MakeLedger(GeneratedLedger& ledger, int trades, int codes, unsigned seed)
{
    store::InstallDelivered(ledger.dir.path());
    ledger.dbSet.Open(ledger.dir.filePath(store::kSettingsFile));
    ledger.dbExe.Open(ledger.dir.filePath(store::kScratchPortfolio));

    const char* systems[] = {"DAY", "SWING", "TREND", "LUNGO", "BANCA"};
    const char* errors[] = {"NE", "NE", "NE", "NE", "EA", "ER", "UA", "UR", "SL", "MM", "CT", "ZZ"};
    std::mt19937 rng(seed);
    std::vector<int> held(static_cast<std::size_t>(codes), 0);
    QDate day(2020, 1, 2);

    store::Transaction tx(ledger.dbExe);
    for (int i = 0; i < trades; ++i) {
        if (i % 12 == 11)
            day = day.addDays(day.dayOfWeek() == 5 ? 3 : 1);
        const int c = static_cast<int>(rng() % static_cast<unsigned>(codes));
        int& pieces = held[static_cast<std::size_t>(c)];
        const double price = 2.0 + static_cast<double>(rng() % 4000) / 100.0;
        const unsigned roll = rng() % 10;
        QString tipo = QStringLiteral("Buy");
        int qta = 100 * static_cast<int>(1 + rng() % 10);
        if (pieces > 0 && roll >= 5) {
            tipo = QStringLiteral("Sell");
            qta = roll >= 8 || pieces < 200 ? pieces : 100 * ((pieces / 100) / 2);
        }
        pieces += tipo == QLatin1String("Buy") ? qta : -qta;
        const QString cod = QStringLiteral("C%1").arg(c, 3, 10, QLatin1Char('0'));
        ledger.dbExe.Execute(
            "INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale) VALUES ('"
            + num::DateText(day) + "','" + tipo + "','" + systems[rng() % 5] + "','" + cod + "','Titolo " + cod + "',"
            + QString::number(qta) + "," + num::SqlText(price) + "," + num::SqlText(num::Round(qta * price, 2)) + ",'"
            + errors[rng() % 12] + "'," + num::SqlText(price) + ")");
    }
    tx.Commit();
}

} // namespace bench
