// What tests of a list of articles start from.
#pragma once

#include "storage/Article.h"

#include <gtest/gtest.h>

#include <string>

class ArticleListTest : public testing::Test {
protected:
    Article& addWith(const std::string& name, const std::string& field, const std::string& value)
    {
        Article& article = articles.addNamed(name);
        article.setFieldByName(field, value);
        return article;
    }
    void addAll(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            articles.addNamed(name);
    }
    void sortBy(const std::string& key, bool ascending = true)
    {
        const SortDescriptor descriptor {key, ascending};
        articles.sortUsingDescriptors({&descriptor, 1});
    }

    ArticleShop shop;
    Articles& articles = shop.articles;
};
