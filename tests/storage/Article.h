// A small kind of record, and a list of them, for tests of what all kinds have in common.
#pragma once

#include "foundation/Dates.h"
#include "foundation/Numbers.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/CollectionFile.h"
#include "storage/Record.h"
#include "support/FakeDesktop.h"

#include <array>
#include <memory>
#include <string>

struct ArticleValues {
    Text name;
    Text code;
    Text price;
    Text date;
    Text note;
    int owner = 0;
    bool sold = false;
    bool stocked = true;

    bool operator==(const ArticleValues&) const = default;
};

inline constexpr std::array articleFields {
    field<&ArticleValues::name>("name").searched(),
    field<&ArticleValues::code>("code").searched(),
    field<&ArticleValues::price>("price"),
    field<&ArticleValues::date>("date"),
    field<&ArticleValues::note>("note").searched().always(),
    field<&ArticleValues::owner>("owner").always(),
    field<&ArticleValues::sold>("sold").always(),
    // Written under one name and read under another.
    field<&ArticleValues::stocked>("stocked").always().readsFrom("Stocked"),
};
static_assert(namesAreUnique(articleFields));

class Article : public Record<Article, ArticleValues> {
public:
    struct Nested {
        std::vector<std::string> parts;
    };
    static constexpr bool idIsSettable = true;
    static constexpr auto& fieldRows() { return articleFields; }
    static std::span<const DerivedField<Article>> derivedFields() { return {}; }

    float getNumericCode() const override { return numbers::digitsOf(values().code); }
    float getNumericOrdernum() const override { return -getNumericCode(); }
    bool isComplete() const override { return values().sold; }
    std::int64_t getDateByName(std::string_view nameAsDate) const override
    {
        const std::optional<QDate> date = nameAsDate == "dateasdate" ? dates::readDate(values().date, dates::dayFirst) : std::nullopt;
        return date.value_or(QDate(2000, 1, 1)).toJulianDay();
    }

    std::vector<std::string> parts;
};

/// Settings whose answer a test chooses.
struct ChosenSorting : SortSettings {
    std::string codeSort() const override { return chosen; }
    std::string chosen;
};

class Articles : public Collection<Article> {
public:
    using Collection::Collection;

    Article& addNamed(const std::string& name, int id = 0)
    {
        auto article = std::make_unique<Article>();
        article->setID(id);
        article->setFieldByName("name", name);
        return add(std::move(article));
    }
    /// Hides all that do not hold every word.
    void search(std::string_view words)
    {
        m_words = words;
        applyFilter();
        reloadData();
    }
    std::string objectValue(std::string_view identifier, int row) const override
    {
        const Article* article = getnthVisibleItem(row);
        return article ? article->getFieldByName(identifier) : std::string();
    }
    bool setObjectValue(std::string_view identifier, int row, std::string_view value) override
    {
        Article* article = getnthVisibleItem(row);
        return article && value != "refused" && article->setFieldByName(identifier, value);
    }
    /// The names of the visible rows, each followed by a blank.
    std::string shown() const
    {
        std::string names;
        for (int row = 0; row < numberOfRows(); ++row)
            names += objectValue("name", row) + ' ';
        return names;
    }

protected:
    void applyFilter() override
    {
        makeAllVisible();
        hideWithoutWords(m_words);
    }

private:
    std::string m_words;
};

/// "articles.xml" with the key "articles".
class ArticleFile : public CollectionFile<Article> {
public:
    explicit ArticleFile(Articles& articles, const char* fileName = "articles.xml", const char* logName = "articles")
        : CollectionFile(articles, fileName, "articles", logName)
    {
    }

protected:
    std::unique_ptr<Article> make() const override { return std::make_unique<Article>(); }
    Article::Nested nestedOf(const Article& article) const override { return {article.parts}; }
    void added(Article& article, const StoredRecord<Article>& stored) override { article.parts = stored.nested.parts; }
    std::span<const NestedKey<Article>> nestedKeys() const override { return partKeys; }

private:
    static bool hasParts(const StoredRecord<Article>& stored) { return !stored.nested.parts.empty(); }
    static void writeParts(const StoredRecord<Article>& stored, PlistWriter& writer)
    {
        writer.openArray();
        for (const std::string& part : stored.nested.parts)
            writer.text(part);
        writer.closeArray();
    }
    static bool readParts(StoredRecord<Article>& stored, const PlistValue& value, TextStore&)
    {
        for (const PlistValue& part : value.array())
            stored.nested.parts.push_back(part.asText());
        return value.isArray();
    }
    static constexpr std::array partKeys {NestedKey<Article> {"parts", hasParts, writeParts, readParts}};
};

/// A list of articles with everything it needs.
struct ArticleShop {
    ChosenSorting sorting;
    FakeBeeper beeper;
    Articles articles {sorting, beeper};
};
