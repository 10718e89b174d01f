#pragma once
#include <QHash>
#include <QString>

#include <compare>
#include <optional>
#include <set>
#include <vector>

namespace store {
class Database;
}

namespace ledger {

// The most distinct codes a journal can hold over its whole history.
inline constexpr int kMaxCodici = 100;

// Walks Eseguiti in date order over quantities alone and returns the first
// fault in words ("" when every sale finds enough pieces). A 101st distinct
// code bought fails with platform::IndexOutOfRange.
QString ControlloSequenza(store::Database& dbExe);

// The check's answer for a table that only grows by trades inserted one at a time
// (each with the highest ID so far) and by taking the last one out again: the same
// fault, or the same failure at the 101st code, as ControlloSequenza on the table,
// without walking it again. Each code is walked on its own, and the walk over the
// table ends at the earliest of the codes' first faults and the 101st first buy.
class SequenzaInMemoria {
public:
    // Reads Eseguiti as the check reads it.
    explicit SequenzaInMemoria(store::Database& dbExe);
    // Reads back the trade just inserted, the one with the highest ID.
    void AggiungiUltimo(store::Database& dbExe);
    long long UltimoId() const { return ultimo_.id; }
    // Forgets the trade added last (it was taken out of the table).
    void TogliUltimo();
    // What ControlloSequenza would return now; throws as it does at the 101st code.
    QString Controlla() const;

private:
    // Where a trade stands in the check's walk: by date (none first), then by ID.
    struct Chiave {
        bool conData = false;
        QString data; // yyyy-mm-dd, compared as the table's text is
        long long id = 0;
        std::weak_ordering operator<=>(const Chiave&) const = default;
    };
    struct Voce {
        Chiave chiave;
        bool acquisto = false;
        double qta = 0;
        QString testoData; // as the fault shows it
    };
    struct Codice {
        std::vector<Voce> voci; // in walk order
        std::optional<Chiave> primoAcquisto;
        std::optional<Chiave> guasto;
        QString messaggio;
    };
    struct Ultimo {
        QString cod;
        Chiave chiave;
        long long id = 0;
    };
    void ricalcola(const QString& cod);

    QHash<QString, Codice> codici_; // by exact text, case included
    std::set<std::pair<Chiave, QString>> guasti_; // each code's first fault
    std::set<Chiave> primiAcquisti_; // the buys that take a slot
    Ultimo ultimo_;
};

} // namespace ledger
