// Brings the user's stationery and reports up to the way payments are recorded now.
#pragma once

#include <QString>

class TemplateUpgrade {
public:
    /// support: the folder that holds the stationery and the reports. resources: where the built-in reports come from.
    TemplateUpgrade(QString support, QString resources) : m_support(std::move(support)), m_resources(std::move(resources)) { }

    /// Changes the tags in every template and puts two built-in reports in place of the user's. What fails is logged.
    void run() const;

private:
    void upgradeTemplate(const QString& path) const;
    void copyReport(const QString& fileName) const;

    QString m_support;
    QString m_resources;
};
