// Which tag of a template stands for what, and in which order the tags are filled.
#pragma once

class Contact;
class Order;
class SettingsStore;
class Substitution;

namespace stationeryTags {

/// The tags of an order's contact; emptied when there is none.
void fillContact(Substitution& text, const Contact* contact);
/// The tags of its second contact.
void fillSecondContact(Substitution& text, const Contact* contact);
/// The order's own figures and words, and the settings that documents show.
void fillOrder(Substitution& text, const Order& order, const SettingsStore& settings);
/// The tags of a contact that was given to the document directly.
void fillGivenContact(Substitution& text, const Contact* contact);

} // namespace stationeryTags
