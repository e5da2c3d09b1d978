#pragma once
// The sentences of the status line, in German. Not the message boxes' texts, which their features own.

#include <array>

#include "app/text/text.h"

// Each sentence is the key of its translation in the language files, so it holds no "=" and begins with
// neither "[" nor ";". "%1", "%2" stand for arguments. A new sentence goes into kAll as well, by which a
// test checks that the English language file is complete.
namespace app::sentences {

// What playing does; "%1" is the station's name.
inline constexpr TextView kResolving = u"Ermittle die Adresse …";
inline constexpr TextView kConnecting = u"Verbinde mit %1 …";
inline constexpr TextView kBuffering = u"%1: Puffere %2 %";
inline constexpr TextView kPlaying = u"%1 läuft.";
inline constexpr TextView kPlayingCodec = u"%1 – %2";
inline constexpr TextView kPlayingRate = u"%1 – %2 kbit/s";
inline constexpr TextView kPlayingCodecAndRate = u"%1 – %2, %3 kbit/s";
inline constexpr TextView kPaused = u"%1 ist angehalten.";
inline constexpr TextView kReconnectingIn = u"%1: Verbindung verloren, nächster Versuch in %2 s";
inline constexpr TextView kReconnecting = u"%1: Verbindung verloren, neuer Versuch …";
inline constexpr TextView kNoDevice = u"%1 ist nicht zu hören: Es ist kein Audiogerät da.";
inline constexpr TextView kEnded = u"%1 ist zu Ende.";
inline constexpr TextView kStopped = u"Gestoppt.";
inline constexpr TextView kBadAddress = u"Die Adresse von %1 ist ungültig.";
inline constexpr TextView kUnknownHost =
    u"Der Server von %1 ist nicht zu finden. Stimmt die Adresse, und besteht eine Internetverbindung?";
inline constexpr TextView kNoAnswer = u"Der Server von %1 antwortet nicht.";
inline constexpr TextView kRefused = u"Der Server von %1 nimmt keine Verbindung an.";
inline constexpr TextView kHungUp = u"Der Server von %1 hat die Verbindung ohne Antwort beendet.";
inline constexpr TextView kLoginWanted = u"%1 verlangt eine Anmeldung.";
inline constexpr TextView kForbidden = u"Der Server von %1 verweigert den Zugang.";
inline constexpr TextView kUnknownAddress = u"Der Server von %1 kennt diese Adresse nicht.";
inline constexpr TextView kServerTrouble = u"Der Server von %1 ist gestört (Fehler %2).";
inline constexpr TextView kHttpStatus = u"Der Server von %1 meldet den Fehler %2.";
inline constexpr TextView kTooManyRedirects = u"Der Server von %1 leitet immer nur weiter.";
inline constexpr TextView kCertificateExpired = u"Das Zertifikat von %1 ist abgelaufen.";
inline constexpr TextView kCertificateNotYetValid =
    u"Das Zertifikat von %1 gilt noch nicht. Geht die Uhr richtig?";
inline constexpr TextView kCertificateOtherName = u"Das Zertifikat von %1 gehört zu einem anderen Server.";
inline constexpr TextView kCertificateUnknownIssuer =
    u"Das Zertifikat von %1 stammt von einem unbekannten Aussteller.";
inline constexpr TextView kNoSecureConnection = u"Eine sichere Verbindung zu %1 kommt nicht zustande.";
inline constexpr TextView kWebPage = u"%1 liefert keinen Ton, sondern Text oder eine Webseite.";
inline constexpr TextView kNoDecoder = u"Für %1 fehlt ein Decoder: %2.";
inline constexpr TextView kNoDecoderPackage = u"Für %1 fehlt ein Decoder: %2 (Paket %3).";
inline constexpr TextView kFileNotFound = u"Die Datei von %1 gibt es nicht.";
inline constexpr TextView kFileNoAccess = u"Die Datei von %1 lässt sich nicht lesen.";
inline constexpr TextView kUnreadable = u"Die Daten von %1 sind beschädigt oder kein Ton.";
inline constexpr TextView kNoSoundDevice = u"%1 kann nicht spielen: Das Audiogerät fehlt oder versagt.";
inline constexpr TextView kConnectionLost = u"Die Verbindung zu %1 ist abgebrochen.";
inline constexpr TextView kCannotPlay = u"%1 kann nicht abgespielt werden.";

// What features report.
inline constexpr TextView kNoAddress = u"Zu „%1“ gibt es keine Adresse.";
inline constexpr TextView kNoMixer = u"Es ließ sich kein Lautstärkemixer öffnen.";
inline constexpr TextView kNoDirectory = u"Das Senderverzeichnis ließ sich nicht öffnen: %1";
inline constexpr TextView kNoRecorder = u"Das Aufnahme-Tool OZRecordFunkhaus ließ sich nicht starten.";
inline constexpr TextView kNoGuide = u"Das Handbuch ist nicht installiert.";
inline constexpr TextView kGuideNotOpened = u"Das Handbuch ließ sich nicht öffnen: %1";             // address
inline constexpr TextView kNotWritten = u"Nicht gespeichert: %1 konnte nicht geschrieben werden.";  // path
inline constexpr TextView kNotDeleted =
    u"Nicht gelöscht: %1 konnte nicht geschrieben werden. Der Eintrag erscheint wieder.";  // path
inline constexpr TextView kBroughtBack = u"„%1“ ist wieder da.";  // name of a station
inline constexpr TextView kNameTaken =
    u"Nicht zurückgeholt: Es gibt inzwischen einen anderen Eintrag „%1“.";  // name of a station

inline constexpr TextView kImported = u"Geladene Einträge: %1. Sie sind noch nicht gespeichert.";
inline constexpr TextView kImportedIntoView =
    u"Geladene Einträge: %1. Sie stehen nur in dieser Ansicht und werden nicht gespeichert.";
// Why an import brought nothing; "%1" is the file's name.
inline constexpr TextView kImportUnreadable = u"Nichts geladen: %1 konnte nicht gelesen werden.";
inline constexpr TextView kImportEmpty = u"Nichts geladen: %1 ist leer.";
inline constexpr TextView kImportUtf16 =
    u"Nichts geladen: %1 ist in UTF-16 geschrieben und müsste in Windows-1252 geschrieben sein.";
inline constexpr TextView kImportPls = u"Nichts geladen: %1 ist eine PLS-Liste und keine M3U-Liste.";
inline constexpr TextView kImportNoComma =
    u"Nichts geladen: In %1 steht in der ersten Zeile „#EXTINF:“ kein Komma vor dem Namen.";
inline constexpr TextView kImportNoEntries =
    u"Nichts geladen: %1 enthält keine Zeile, die mit „#EXTINF:“ beginnt.";

// What was dropped on the window or given when the program was started; "%1" is a file's name or an address.
inline constexpr TextView kNotOpenable =
    u"Nicht geöffnet: %1 ist keine Senderliste (M3U, M3U8, PLS) und keine Adresse (http, https).";
inline constexpr TextView kNotOpenedNow =
    u"Nicht geöffnet: %1. Bitte zuerst das offene Fenster schließen und es dann noch einmal versuchen.";
inline constexpr TextView kListMissing = u"Nichts geladen: %1 gibt es nicht.";
inline constexpr TextView kListUnreadable =
    u"Nichts geladen: %1 ist nicht lesbar, keine Datei oder größer als 16 MB.";
inline constexpr TextView kListIsStream =
    u"Nichts geladen: %1 beschreibt die Teile eines einzigen Streams (HLS) und keine Sender.";
inline constexpr TextView kListWithoutLinks =
    u"Nichts geladen: %1 enthält keine Adresse, die mit „http://“ oder „https://“ beginnt.";
inline constexpr TextView kListCut =
    u"Geladene Einträge: %1, mehr auf einmal geht nicht. Sie sind noch nicht gespeichert.";  // how many

// At the start, about rows that were unsaved when the program last ended without asking; "%1" is how many.
inline constexpr TextView kOneRowRestored = u"Ein nicht gespeicherter Eintrag wurde wiederhergestellt.";
inline constexpr TextView kRowsRestored = u"%1 nicht gespeicherte Einträge wurden wiederhergestellt.";
inline constexpr TextView kKeptRowsUnreadable =
    u"Die Sicherung nicht gespeicherter Einträge ist unlesbar und wurde beiseitegelegt.";

inline constexpr std::array kAll = {kResolving,
                                    kConnecting,
                                    kBuffering,
                                    kPlaying,
                                    kPlayingCodec,
                                    kPlayingRate,
                                    kPlayingCodecAndRate,
                                    kPaused,
                                    kReconnectingIn,
                                    kReconnecting,
                                    kNoDevice,
                                    kEnded,
                                    kStopped,
                                    kNoAddress,
                                    kNoMixer,
                                    kNoDirectory,
                                    kNoRecorder,
                                    kNoGuide,
                                    kGuideNotOpened,
                                    kBadAddress,
                                    kUnknownHost,
                                    kNoAnswer,
                                    kRefused,
                                    kHungUp,
                                    kLoginWanted,
                                    kForbidden,
                                    kUnknownAddress,
                                    kServerTrouble,
                                    kHttpStatus,
                                    kTooManyRedirects,
                                    kCertificateExpired,
                                    kCertificateNotYetValid,
                                    kCertificateOtherName,
                                    kCertificateUnknownIssuer,
                                    kNoSecureConnection,
                                    kWebPage,
                                    kNoDecoder,
                                    kNoDecoderPackage,
                                    kFileNotFound,
                                    kFileNoAccess,
                                    kUnreadable,
                                    kNoSoundDevice,
                                    kConnectionLost,
                                    kCannotPlay,
                                    kNotWritten,
                                    kNotDeleted,
                                    kBroughtBack,
                                    kNameTaken,
                                    kImported,
                                    kImportedIntoView,
                                    kImportUnreadable,
                                    kImportEmpty,
                                    kImportUtf16,
                                    kImportPls,
                                    kImportNoComma,
                                    kImportNoEntries,
                                    kNotOpenable,
                                    kNotOpenedNow,
                                    kListMissing,
                                    kListUnreadable,
                                    kListIsStream,
                                    kListWithoutLinks,
                                    kListCut,
                                    kOneRowRestored,
                                    kRowsRestored,
                                    kKeptRowsUnreadable};

}  // namespace app::sentences
