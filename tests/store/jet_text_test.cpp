#include "store/jet/text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace jet;
using namespace std::string_literals;

TEST(JetText, AccentsDecideOnlyBetweenEqualLetters)
{
    const std::vector<std::string> sorted{"",      "Alba",  "Álvarez",   "andrea",  "Añez",
                                          "Anzoa", "canon", "CAÑÓN",     "cañones", "Pena",
                                          "peña",  "Peñas", "Strasse 1", "straße 2"};
    for (size_t i = 0; i < sorted.size(); ++i)
        for (size_t k = 0; k < sorted.size(); ++k) {
            const int expected = i < k ? -1 : i > k ? 1 : 0;
            EXPECT_EQ(compareText(sorted[i], sorted[k]), expected) << sorted[i] << " " << sorted[k];
        }
}

TEST(JetText, EqualMeansTheSameFoldedForm)
{
    const std::string acute = "e\xCC\x81"; // e and a separate accent
    std::vector<std::string> texts{acute, "a\0b"s, "A\0B"s, "preñez actual", "PREÑEZ ACTUAL"};
    for (const char *text : {"",           "a",       "A",       "é",          "É",
                             "e",          "E",       "ñandú",   "ÑANDÚ",      "nandu",
                             "Straße",     "STRASSE", "İzmir",   "izmir",      "ΣΑΣ",
                             "σας",        "\xFF",    "\xC3",    "ab\xF0\x9F", "\xED\xA0\x80",
                             "a\xCC\x81z", "áZ",      "\xCC\x81"})
        texts.push_back(text);
    for (const std::string &a : texts)
        for (const std::string &b : texts) {
            EXPECT_EQ(compareText(a, b) == 0, fold(a) == fold(b)) << a << " " << b;
            EXPECT_EQ(compareText(a, b), -compareText(b, a)) << a << " " << b;
            for (const std::string &c : texts)
                EXPECT_FALSE(compareText(a, b) < 0 && compareText(b, c) < 0
                             && compareText(a, c) >= 0)
                    << a << " " << b << " " << c;
        }
    EXPECT_EQ(compareText("É", "é"), 0);
    EXPECT_EQ(compareText(acute, "É"), 0);
    EXPECT_NE(compareText("e", "é"), 0);
    EXPECT_EQ(compareText("Straße", "STRASSE"), 0);
}

// Wildcards are tested in corpus/semantics.sql.
TEST(JetText, LikeTakesAnyBytes)
{
    EXPECT_TRUE(similar("a\xFF", "a?"));
    EXPECT_TRUE(similar("a\0b"s, "a?b"));
}

// The fast search for plain text must agree with the general matcher, which every pattern that
// contains "[]" uses.
TEST(JetText, PlainPiecesMeanTheSameAsTheirPatterns)
{
    const std::vector<std::string> texts{"",       "a",       "Fido",      "fidofido",
                                         "PEÑÓN",  "peñon",   "a*b[c",     "Straße",
                                         "x\xFFy", "El Niño", "e\xCC\x81", "Ca\xC3"};
    const std::vector<std::string> pieces{"",     "a",   "FI", "o",  "ñ", "Ñó",
                                          "[*]b", "[[]", "ss", "xx", "e", "ca"};
    for (const std::string &text : texts)
        for (const std::string &piece : pieces)
            for (const std::string before : {"", "*", "**"})
                for (const std::string behind : {"", "*"})
                    EXPECT_EQ(similar(text, before + piece + behind),
                              similar(text, before + "[]" + piece + behind))
                        << text << " like " << before << piece << behind;
}

TEST(JetText, PlainLettersHaveNeitherCaseNorAccents)
{
    EXPECT_EQ(plainOf("Álvarez ÑANDÚ"), "alvarez nandu");
    EXPECT_EQ(plainOf("e\xCC\x81Ç"), "ec");
    EXPECT_EQ(plainOf("Straße 2"), "strasse 2");
}

TEST(JetText, ManyStarsEndInTime)
{
    std::string pattern;
    for (int i = 0; i < 200; ++i)
        pattern += "*a";
    EXPECT_FALSE(similar(std::string(5000, 'a') + "b", pattern));
    EXPECT_TRUE(similar(std::string(5000, 'a'), pattern));
}
