-- The portfolio side: DataExe.qvd and every .qvp file.
CREATE TABLE Eseguiti (
  ID INTEGER PRIMARY KEY,
  Data TEXT CHECK (Data IS NULL OR date(Data) IS Data),
  Tipo TEXT COLLATE NOCASE,
  System TEXT COLLATE NOCASE,
  Cod TEXT COLLATE NOCASE,
  Titolo TEXT COLLATE NOCASE,
  Qta REAL,
  Prezzo REAL,
  Importo REAL,
  Errore TEXT COLLATE NOCASE,
  PrezzoOttimale REAL
) STRICT;
CREATE TABLE EseguitiTemp (
  ID INTEGER PRIMARY KEY,
  Data TEXT CHECK (Data IS NULL OR date(Data) IS Data),
  Tipo TEXT COLLATE NOCASE,
  System TEXT COLLATE NOCASE,
  Cod TEXT COLLATE NOCASE,
  Titolo TEXT COLLATE NOCASE,
  Qta REAL,
  Prezzo REAL,
  Importo REAL,
  Errore TEXT COLLATE NOCASE,
  PrezzoOttimale REAL
) STRICT;
CREATE TABLE EseguitiBackup (
  ID INTEGER PRIMARY KEY,
  Data TEXT CHECK (Data IS NULL OR date(Data) IS Data),
  Tipo TEXT COLLATE NOCASE,
  System TEXT COLLATE NOCASE,
  Cod TEXT COLLATE NOCASE,
  Titolo TEXT COLLATE NOCASE,
  Qta REAL,
  Prezzo REAL,
  Importo REAL,
  Errore TEXT COLLATE NOCASE,
  PrezzoOttimale REAL
) STRICT;
CREATE INDEX Eseguiti_Data ON Eseguiti (Data);
CREATE TABLE Portafoglio (
  System TEXT COLLATE NOCASE,
  Cod TEXT COLLATE NOCASE,
  Titolo TEXT COLLATE NOCASE,
  Qta REAL,
  PzoCarico REAL,
  Importo REAL,
  Commissioni REAL
) STRICT;
CREATE INDEX Portafoglio_Cod ON Portafoglio (Cod);
CREATE TABLE OperazioniChiuse (
  Data TEXT CHECK (Data IS NULL OR date(Data) IS Data),
  giornoDiSettimana REAL,
  System TEXT COLLATE NOCASE,
  Cod TEXT COLLATE NOCASE,
  Titolo TEXT COLLATE NOCASE,
  PzoCarico REAL,
  Qta REAL,
  Prezzo REAL,
  GP REAL,
  GPPercentuale REAL,
  Commissioni REAL,
  Errore TEXT COLLATE NOCASE,
  PrezzoOttimale REAL
) STRICT;
CREATE TABLE Conto (
  ID INTEGER PRIMARY KEY,
  Data TEXT CHECK (Data IS NULL OR date(Data) IS Data),
  Tipo TEXT COLLATE NOCASE,
  Importo REAL,
  Descrizione TEXT COLLATE NOCASE
) STRICT;
