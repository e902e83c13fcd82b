// The pages of the settings window, one function each.
#pragma once

class PrefsController;
class SettingsPage;
class Vendaro;

namespace settingsPages {

/// Currency, prefixes, dates, order of lists, stock.
SettingsPage* makeGeneral(PrefsController& preferences);
SettingsPage* makeTax(PrefsController& preferences);
/// The user's words and the headings of the lines.
SettingsPage* makeWords(PrefsController& preferences);
/// Statuses, bill categories, contact types.
SettingsPage* makeLists(PrefsController& preferences);
/// The colours of the statuses.
SettingsPage* makeColours(PrefsController& preferences);
SettingsPage* makeColumns(PrefsController& preferences);
SettingsPage* makeTime(PrefsController& preferences);
/// Templates.
SettingsPage* makeDocuments(Vendaro& vendaro);
/// The files and folders that people are taken from.
SettingsPage* makeAddressBook(PrefsController& preferences);
SettingsPage* makeDatabases(Vendaro& vendaro);
/// Light or dark, whether tips are shown, and whether and where updates are asked for.
SettingsPage* makeLook(PrefsController& preferences);

} // namespace settingsPages
