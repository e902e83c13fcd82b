// Brings the user's stationery and reports up to the way payments are recorded now.
#pragma once

#include "foundation/Result.h"

#include <QString>

class RecoveryStore;

class TemplateUpgrade {
public:
    /// support: the folder that holds the stationery and the reports. resources: where the built-in reports come from.
    TemplateUpgrade(QString support, QString resources, RecoveryStore& recovery)
        : m_support(std::move(support))
        , m_resources(std::move(resources))
        , m_recovery(recovery)
    {
    }

    /// Changes the tags in every template and puts two built-in reports in place of the user's. What fails is logged. Templates and reports
    /// that become others are kept in the recovery store as they were; what cannot be kept stays as it is.
    void run() const;

private:
    void upgradeTemplate(const QString& path) const;
    Result<void> replaceText(const QString& package) const;
    void copyReport(const QString& fileName) const;
    Result<void> replaceReport(const QString& source, const QString& target) const;

    QString m_support;
    QString m_resources;
    RecoveryStore& m_recovery;
};
