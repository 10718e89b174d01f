-- The settings database DataSet.qvd.
CREATE TABLE Settaggi (
  CapitaleIniziale REAL,
  CapitalGain REAL,
  SLMM REAL,
  SLP REAL,
  Pwd TEXT,
  ApriUltimo TEXT,
  Tip REAL,
  Benvenuto REAL,
  Clock REAL,
  Menu REAL,
  Icone32 REAL,
  IconeName REAL
) STRICT;
CREATE TABLE System (
  Cod TEXT COLLATE NOCASE,
  Descrizione TEXT COLLATE NOCASE,
  Commissioni REAL,
  CommissioniMin REAL
) STRICT;
CREATE TABLE Errori (
  Cod TEXT COLLATE NOCASE CHECK (Cod IS NULL OR length(Cod) <= 2),
  Descrizione TEXT COLLATE NOCASE,
  Note TEXT COLLATE NOCASE,
  Contatore REAL,
  Importo REAL
) STRICT;
CREATE TABLE ErroriDefault (
  Cod TEXT COLLATE NOCASE CHECK (Cod IS NULL OR length(Cod) <= 2),
  Descrizione TEXT COLLATE NOCASE,
  Note TEXT COLLATE NOCASE,
  Contatore REAL,
  Importo REAL
) STRICT;
CREATE TABLE Colori (
  ColoreSfondo REAL,
  ColoreTesto REAL,
  ClockLancette REAL
) STRICT;
CREATE TABLE Consiglio (
  Consiglio TEXT COLLATE NOCASE
) STRICT;
-- The user's mappings of brokers' files for the guided import, one row a name.
CREATE TABLE ModelliImportazione (
  Nome TEXT COLLATE NOCASE,
  Intestazione TEXT,
  RigaIntestazione REAL,
  Separatore TEXT,
  Decimale TEXT,
  FormatoData TEXT,
  CampoData TEXT,
  CampoOra TEXT,
  CampoTipo TEXT,
  CampoSegno TEXT,
  CampoCod TEXT,
  CampoTitolo TEXT,
  CampoQta TEXT,
  CampoPrezzo TEXT,
  CampoImporto TEXT,
  CampoCambio TEXT,
  ParoleAcquisto TEXT,
  ParoleVendita TEXT,
  ParoleVersamento TEXT,
  ParolePrelievo TEXT,
  ParoleDividendi TEXT,
  ParoleCosti TEXT,
  RecentiPrima REAL
) STRICT;
