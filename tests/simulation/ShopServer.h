// The shop, asked by a driver: one JSON object asks for something, one answers with what was told and what the collections hold then.
#pragma once

#include "faults/Shop.h"
#include "simulation/MemoryDump.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>

#include <memory>

class ShopServer {
public:
    /// asked: "home", "user", and "counts", the file that receives the numbers of file calls.
    explicit ShopServer(const QJsonObject& asked);

    /// Does what is asked and answers when nothing is being written any more. "do" names the deed; "now" sets the clock before it,
    /// "fault" gives the fault for it ("stays": until the next one is asked for), "answers" the buttons for alerts by their titles.
    /// The answer holds "alerts", "told", "unsaved", "readOnly", what the deed itself answers, and in "memory" every collection that
    /// changed since the last answer.
    QJsonObject handle(const QJsonObject& asked);
    /// Whether the program ended.
    bool hasQuit() const { return m_hasQuit; }

    Shop& shop() { return *m_shop; }
    Vendaro& app() { return m_shop->app(); }
    /// Puts something of the deed's own into the answer.
    void say(const char* key, const QJsonValue& value) { m_answer[QLatin1String(key)] = value; }
    void quit();

private:
    std::optional<int> answerTo(const Alert& alert);
    void armFault(const QJsonObject& fault);

    std::string m_home;
    std::string m_counts;
    std::unique_ptr<Shop> m_shop;
    std::unique_ptr<MemoryDump> m_memory;
    QJsonObject m_answer;
    QJsonObject m_buttons;
    QJsonArray m_alerts;
    QJsonArray m_told;
    bool m_faultStays = false;
    bool m_hasQuit = false;
};

/// What the shop can be asked for, by name; none for an unknown name.
using ShopDeed = void (*)(ShopServer& server, const QJsonObject& asked);
ShopDeed shopDeed(const QString& name);
ShopDeed recordDeed(const QString& name);
ShopDeed orderDeed(const QString& name);
ShopDeed houseDeed(const QString& name);

/// Types into fields of a form: pairs of a field's name and a text, a flag, a title or the place of one; in their order.
void editForm(Form& form, const QJsonArray& edits);
