// One question to a web server: what comes, what is refused, and what is said when it goes wrong.
#include "app/Fetch.h"

#include "support/HttpServer.h"

#include <QNetworkAccessManager>
#include <gtest/gtest.h>

namespace {

class FetchTest : public testing::Test {
protected:
    /// Asks, and waits for the answer; empty when all went well, else the sentence.
    std::string ask(const QUrl& address)
    {
        bytes.clear();
        endings = 0;
        std::string sentence;
        Fetch fetch(*network, address, limits);
        fetch.onBytes = [this](QByteArrayView piece) { bytes.append(piece.data(), piece.size()); };
        fetch.onProgress = [this](qint64 received, qint64 total) {
            lastReceived = received;
            lastTotal = total;
        };
        fetch.onFinished = [&](const Result<void>& outcome) {
            ++endings;
            sentence = outcome ? "" : outcome.error().message;
        };
        EXPECT_TRUE(waitUntil([this] { return endings > 0; }));
        waitUntil([] { return false; }, 20);
        EXPECT_EQ(endings, 1);
        return sentence;
    }
    std::string ask(const QString& path) { return ask(server.url(path)); }

    HttpServer server;
    std::unique_ptr<QNetworkAccessManager> network = makeNetwork();
    FetchLimits limits {1000, std::chrono::milliseconds(2'000), {}};
    QByteArray bytes;
    int endings = 0;
    qint64 lastReceived = -1;
    qint64 lastTotal = -1;
};

} // namespace

TEST_F(FetchTest, bringsWhatTheServerSends)
{
    server.serve("/a", "Hello");
    EXPECT_EQ(ask("/a"), "");
    EXPECT_EQ(bytes, "Hello");
    EXPECT_EQ(lastReceived, 5);
    EXPECT_EQ(lastTotal, 5);
    EXPECT_TRUE(server.lastQuestion().startsWith("GET /a HTTP/1.1\r\n")) << server.lastQuestion().toStdString();
    EXPECT_FALSE(server.lastQuestion().contains("Cookie"));
}

TEST_F(FetchTest, bringsWhatComesInPieces)
{
    server.answer("/a", {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nHello\r\n6\r\n world\r\n0\r\n\r\n", -1, 3, 1});
    EXPECT_EQ(ask("/a"), "");
    EXPECT_EQ(bytes, "Hello world");
}

TEST_F(FetchTest, nothingIsSomethingToo)
{
    server.serve("/a", "");
    EXPECT_EQ(ask("/a"), "");
    EXPECT_EQ(bytes, "");
}

TEST_F(FetchTest, asksOnlyWhereNobodyOnTheWayCanChangeTheAnswer)
{
    for (const char* address : {"https://example.org", "https://example.org:444/x?y#z", "http://localhost/x", "http://127.0.0.1:8000/",
             "http://[::1]/", "http://127.9.9.9/"})
        EXPECT_TRUE(Fetch::mayAsk(QUrl(address))) << address;
    for (const char* address : {"http://example.org", "http://localhost.example.org", "http://127.0.0.1.example.org", "http://192.168.0.1",
             "file:///etc/passwd", "ftp://localhost/", "data:,x", "", "https://", "example.org", "qrc:/x"})
        EXPECT_FALSE(Fetch::mayAsk(QUrl(address))) << address;
}

TEST_F(FetchTest, saysWhatTheServerAnsweredInstead)
{
    server.answer("/gone", {HttpServer::page("a page for browsers", "404 Not Found")});
    EXPECT_EQ(ask("/gone"), "The server 127.0.0.1 answered with 404 Not Found.");
    EXPECT_EQ(bytes, "");
    server.answer("/broken", {HttpServer::page("", "500 Internal Server Error")});
    EXPECT_EQ(ask("/broken"), "The server 127.0.0.1 answered with 500 Internal Server Error.");
    server.answer("/empty", {"HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n"});
    EXPECT_EQ(ask("/empty"), "The server 127.0.0.1 answered with 204.");
    server.answer("/part", {HttpServer::page("abc", "206 Partial Content")});
    EXPECT_EQ(ask("/part"), "The server 127.0.0.1 answered with 206.");
    EXPECT_EQ(bytes, "");
    server.answer("/locked",
        {"HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n"
         "Connection: close\r\n\r\n"});
    EXPECT_EQ(ask("/locked").substr(0, 41), "The server 127.0.0.1 answered with 401 Un");
}

TEST_F(FetchTest, saysWhenNobodyAnswers)
{
    const QUrl address = server.url("/a");
    server.stopListening();
    EXPECT_EQ(ask(address), "The server 127.0.0.1 does not answer.");
}

TEST_F(FetchTest, saysWhenSomethingElseAnswers)
{
    server.answer("/a", {"220 mail.example.org ESMTP\r\n"});
    EXPECT_NE(ask("/a"), "");
    EXPECT_EQ(bytes, "");
}

TEST_F(FetchTest, brokenOffAnywhereItIsNeverWhole)
{
    const QByteArray whole = HttpServer::page("Hello, this is everything.");
    for (qsizetype length = 0; length < whole.size(); ++length) {
        server.answer("/a", {whole, length});
        EXPECT_NE(ask("/a"), "") << length;
    }
    server.answer("/a", {whole, whole.size()});
    EXPECT_EQ(ask("/a"), "");
}

TEST_F(FetchTest, brokenOffInAChunkItIsNotWhole)
{
    const QByteArray whole = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nHello\r\n0\r\n\r\n";
    const qsizetype lastChunk = whole.indexOf("0\r\n\r\n");
    for (qsizetype length = 0; length <= lastChunk; ++length) {
        server.answer("/a", {whole, length});
        EXPECT_NE(ask("/a"), "") << length;
    }
}

TEST_F(FetchTest, anAnswerOfUnknownLengthIsNotTrusted)
{
    server.answer("/a", {"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\nHello"});
    EXPECT_EQ(ask("/a"), "The server 127.0.0.1 does not say whether it sent everything.");
}

TEST_F(FetchTest, refusesWhatIsTooLarge)
{
    limits.largest = 10;
    server.serve("/a", "0123456789");
    EXPECT_EQ(ask("/a"), "");
    server.serve("/b", "0123456789X");
    EXPECT_EQ(ask("/b"), "What the server 127.0.0.1 sends is too large.");
    server.answer("/c", {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nb\r\n0123456789X\r\n0\r\n\r\n"});
    EXPECT_EQ(ask("/c"), "What the server 127.0.0.1 sends is too large.");
    EXPECT_LE(bytes.size(), 10);
    server.answer("/d", {"HTTP/1.1 200 OK\r\nContent-Length: 99999999999999\r\n\r\n", -1, 0, 0, true});
    EXPECT_EQ(ask("/d"), "What the server 127.0.0.1 sends is too large.");
}

TEST_F(FetchTest, givesUpWhenNothingComes)
{
    limits.silence = std::chrono::milliseconds(150);
    server.answer("/a", {"", -1, 0, 0, true});
    EXPECT_EQ(ask("/a"), "The server 127.0.0.1 took longer than 0.15 seconds.");
    server.answer("/b", {HttpServer::page("Hello").chopped(2), -1, 0, 0, true});
    EXPECT_EQ(ask("/b"), "The server 127.0.0.1 took longer than 0.15 seconds.");
}

TEST_F(FetchTest, waitsForWhatComesSlowlyUnlessItTakesTooLongAltogether)
{
    limits.silence = std::chrono::milliseconds(1'000);
    server.answer("/a", {HttpServer::page(QByteArray(40, 'x')), -1, 4, 20});
    EXPECT_EQ(ask("/a"), "");
    EXPECT_EQ(bytes.size(), 40);
    limits.whole = std::chrono::milliseconds(200);
    server.answer("/b", {HttpServer::page(QByteArray(900, 'x')), -1, 4, 20});
    EXPECT_EQ(ask("/b"), "The server 127.0.0.1 took longer than 0.2 seconds.");
}

TEST_F(FetchTest, goesWhereItIsSentOn)
{
    server.answer("/a", {HttpServer::redirect(server.url("/b"))});
    server.serve("/b", "Hello");
    EXPECT_EQ(ask("/a"), "");
    EXPECT_EQ(bytes, "Hello");
    EXPECT_EQ(server.asked(), QStringList({"/a", "/b"}));
}

TEST_F(FetchTest, isNotSentRoundInCircles)
{
    server.answer("/a", {HttpServer::redirect(server.url("/b"))});
    server.answer("/b", {HttpServer::redirect(server.url("/a"))});
    EXPECT_EQ(ask("/a"), "The server 127.0.0.1 sends one from address to address without end.");
    EXPECT_LE(server.asked().size(), 7);
}

TEST_F(FetchTest, isNotSentWhereItWouldNotAsk)
{
    for (const char* target : {"http://example.org/x", "file:///etc/passwd", "ftp://127.0.0.1/x"}) {
        server.answer("/a", {HttpServer::redirect(QUrl(target))});
        EXPECT_NE(ask("/a"), "") << target;
        EXPECT_EQ(bytes, "");
    }
    server.answer("/a", {HttpServer::redirect(QUrl("http://example.org/x"))});
    EXPECT_EQ(ask("/a"), "The server 127.0.0.1 sends one on to http://example.org/x, which is not safe.");
}

TEST_F(FetchTest, givenUpItSaysNothingMore)
{
    server.answer("/a", {HttpServer::page(QByteArray(500, 'x')), -1, 50, 5});
    for (int pieces = 0; pieces < 6; ++pieces) {
        int heard = 0;
        {
            Fetch fetch(*network, server.url("/a"), limits);
            fetch.onBytes = [&](QByteArrayView) { ++heard; };
            fetch.onFinished = [&](const Result<void>&) { heard += 100; };
            ASSERT_TRUE(waitUntil([&] { return heard >= pieces; }));
        }
        const int before = heard;
        waitUntil([] { return false; }, 30);
        EXPECT_EQ(heard, before);
    }
}

TEST_F(FetchTest, mayBeDeletedByWhoHearsThatItIsFinished)
{
    server.serve("/a", "Hello");
    auto fetch = std::make_unique<Fetch>(*network, server.url("/a"), limits);
    fetch->onFinished = [&](const Result<void>&) { fetch.reset(); };
    EXPECT_TRUE(waitUntil([&] { return fetch == nullptr; }));
}
