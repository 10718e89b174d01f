-- Delivered contents of DataSet.qvd. Pwd '5ADB' is the plain value "0" scrambled: no password.
INSERT INTO Settaggi VALUES (10000, 26, 250, 3, '5ADB', '0', 1, 1, 1, 1, 1, 1);

INSERT INTO System VALUES ('DAY', 'Day trading online, ordini eseguiti in giornata', 1.9, 2.95);
INSERT INTO System VALUES ('SWING', 'Swing trading multiday, tenuta di alcuni giorni', 1.5, 5);
INSERT INTO System VALUES ('TREND', 'Trend following settimanale', 1.2, 7.5);
INSERT INTO System VALUES ('LUNGO', 'Cassettista, investimento di lungo periodo', 1, 9);
INSERT INTO System VALUES ('BANCA', 'Ordine telefonico o allo sportello', 7, 12);

INSERT INTO ErroriDefault VALUES ('NE', 'Nessun errore: operazione eseguita secondo il piano', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('EA', 'Entrata anticipata, prima del segnale del sistema', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('ER', 'Entrata in ritardo, a prezzo peggiore del segnale', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('UA', 'Uscita anticipata, profitto lasciato sul tavolo', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('UR', 'Uscita in ritardo, guadagno restituito al mercato', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('SL', 'Stop loss spostato o non rispettato', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('MM', 'Posizione troppo grande rispetto al money management', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('CT', 'Operazione contro il trend principale', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('FP', 'Operazione fuori dal piano di trading', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('MR', 'Mediato al ribasso una posizione in perdita', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('EM', 'Operazione emotiva: paura, avidità o vendetta', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('NV', 'Entrata su notizia non verificata', '', 0, 0);
INSERT INTO ErroriDefault VALUES ('OE', 'Errore di digitazione dell''ordine (quantità o prezzo)', '', 0, 0);
INSERT INTO Errori SELECT * FROM ErroriDefault;

-- Pale blue-grey window, dark slate text, deep blue clock hands (0xRRGGBB).
INSERT INTO Colori VALUES (15265528, 1977661, 2051961);
