#include "contacts/ContactLinks.h"

#include <gtest/gtest.h>

namespace {

TEST(ContactLinksTest, aLetterGoesToTheAddressWithWhatALinkCannotHoldEncoded)
{
    EXPECT_EQ(mailLink("ada+shop@example.org").toString(QUrl::FullyEncoded), "mailto:ada+shop@example.org");
    EXPECT_EQ(mailLink("a@b.example,c@d.example").toString(QUrl::FullyEncoded), "mailto:a@b.example,c@d.example");
    EXPECT_EQ(mailLink("a@b.example?body=hello&cc=eve").toString(QUrl::FullyEncoded), "mailto:a@b.example%3Fbody%3Dhello%26cc%3Deve");
}

TEST(ContactLinksTest, aPageIsFoundAsPeopleTypeIt)
{
    EXPECT_EQ(webLink("www.example.com"), QUrl("https://www.example.com"));
    EXPECT_EQ(webLink("  http://example.com/shop "), QUrl("http://example.com/shop"));
    EXPECT_EQ(webLink("HTTPS://example.com"), QUrl("https://example.com"));
    EXPECT_EQ(webLink("example.com:8080/a b"), QUrl("https://example.com:8080/a%20b"));
}

TEST(ContactLinksTest, whatIsNoneOfTheWebIsNotOpened)
{
    for (const char* typed : {"", "   ", "file:///etc/passwd", "ssh://example.com", "javascript://alert(1)", "http://"})
        EXPECT_TRUE(webLink(typed).isEmpty()) << typed;
}

} // namespace
