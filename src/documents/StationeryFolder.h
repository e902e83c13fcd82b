// The folder with the user's stationery: what is in it, what is put there at first, and one template read into memory.
#pragma once

#include "documents/rtf/RichText.h"
#include "foundation/Result.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <optional>

/// The options of a template, as its property list gives them.
struct StationeryOptions {
    bool centreContent = false;
    /// Points, all four sides.
    double templatePageMargin = 10;
    bool scaleTemplateImage = false;
};

/// One template: a document with tags, and what may stand beside it.
struct StationeryTemplate {
    RichText document;
    /// The folder its pictures are in.
    QString pictures;
    /// None when the template has no property list.
    std::optional<StationeryOptions> options;
    /// Null when the template has no background.
    QImage background;
    /// The style element for the inserted table.
    QString style;
    /// What of it is damaged or, its document, missing: one sentence each, naming the file.
    QStringList damage;
};

class StationeryFolder {
public:
    /// support: the folder the stationery folder lies in. resources: where the built-in templates come from.
    StationeryFolder(QString support, QString resources);

    /// Makes the folder and puts the built-in templates there that are missing.
    Result<void> install() const;
    /// The names to choose from, in the order of the folder's listing.
    QStringList names() const;
    bool hasDocument(const QString& name) const;
    /// The path of a template's file; extension with its dot.
    QString path(const QString& name, const char* extension) const;
    /// What is missing or does not read falls back: an empty document, no options, no background, the plain style. What is there and
    /// does not read is logged and told in the answer's damage.
    StationeryTemplate read(const QString& name) const;

private:
    Result<void> installOne(const QString& fileName) const;

    QString m_support;
    QString m_resources;
};
