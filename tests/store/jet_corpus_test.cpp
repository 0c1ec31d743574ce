// Every statement of the rules is understood, and the engine runs its translation.
#include "jet_engine.h"

#include <QFile>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace jet_test;

namespace
{
Tables schemaOf(const std::string &database)
{
    QFile file(QStringLiteral(":/schema/%1.txt").arg(QString::fromStdString(database)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << database;
    std::istringstream lines(file.readAll().toStdString());
    Tables tables;
    tables.read(lines);
    return tables;
}

std::ifstream corpus()
{
    return std::ifstream(std::filesystem::path(__FILE__).parent_path() / "corpus/statements.sql");
}
} // namespace

TEST(JetCorpus, EveryStatementRunsOnTheEmptySchema)
{
    std::ifstream lines = corpus();
    std::unique_ptr<Engine> engine;
    int run = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.starts_with('#'))
            continue;
        if (line.starts_with('[')) {
            engine = std::make_unique<Engine>(schemaOf(line.substr(1, line.size() - 2)));
            continue;
        }
        ++run;
        if (line.starts_with('!')) {
            const size_t blank = line.find(' ');
            EXPECT_EQ(engine->error(line.substr(blank + 1)), std::stoi(line.substr(1))) << line;
            continue;
        }
        try {
            const jet::Translation t = sqlcipher::translate(line, engine->catalog(), "main");
            if (t.kind == jet::Translation::Define)
                EXPECT_TRUE(t.sql.empty()) << line;
            else
                engine->rows(line, {}, true);
        } catch (const std::exception &e) {
            ADD_FAILURE() << e.what();
        }
    }
    EXPECT_GT(run, 500);
}
