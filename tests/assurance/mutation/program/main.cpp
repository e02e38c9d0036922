#include "reached.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

/// Writes a line for each test: its name, how long it took, and which places of mutants it reached. A first line
/// without a name has those that were reached before.
class Survey final : public ::testing::EmptyTestEventListener
{
public:
    explicit Survey(const char* file)
        : m_lines(file)
    {
    }

    void OnTestProgramStart(const ::testing::UnitTest& /*program*/) override { write("", 0); }

    void OnTestEnd(const ::testing::TestInfo& test) override
    {
        write(std::string(test.test_suite_name()) + "." + test.name(), test.result()->elapsed_time());
    }

private:
    void write(const std::string& name, long long milliseconds)
    {
        m_lines << name << '\t' << milliseconds << '\t';
        for (std::size_t number = 0; number < mutant::reached().size(); ++number)
            if (mutant::reached()[number].exchange(false))
                m_lines << ' ' << number;
        m_lines << std::endl;
    }

    std::ofstream m_lines;
};

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv); // for those tests that run event loops
    const char* const survey = std::getenv("MUTANT_SURVEY");
    if (survey != nullptr && GTEST_FLAG_GET(internal_run_death_test).empty())
        ::testing::UnitTest::GetInstance()->listeners().Append(new Survey(survey));
    return RUN_ALL_TESTS();
}
