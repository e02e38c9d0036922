#include "console/consoleprogram.h"
#include "console/scratchfolder.h"

#include <QJsonArray>
#include <QXmlStreamReader>

#include <string>

namespace tov::testing {

namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class ServiceConsoleReport : public ScratchFolder
{
protected:
    const QString page = folder.filePath("report.html");
};

} // namespace

TEST_F(ServiceConsoleReport, ShowsEverythingThatCanBeRead)
{
    const Outcome run = console({"report"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.errors, IsEmpty());
    for (const char* part :
         {"Time             2", "Provider         simulated " PROJECT_VERSION, "\ncalibration-controller-2   present ",
          "\n65536 bytes, SHA-256 ", "\nFiles\nnone\n", "\n100001\n", "0x2A17  0x0220  0x0001",
          "\n7      ADC offset port 2", "Flag of the system error terms\nflag\noff\n", "\nstart (Hz)  stop (Hz)",
          "\n10000000    1000000000   100\n", "\nmodule         temperature (°C)\n", "  Hz\n", "\ncorrection-10  off",
          "\nDigital board  23\n", "\nulk-power         discrete-attenuator       off\n",
          "\nulk-synthesis     supported-ifs "})
        EXPECT_THAT(run.output, HasSubstr(part));
}

TEST_F(ServiceConsoleReport, GivesTheSameInJson)
{
    const QJsonObject report = console({"--json", "report"}).json();
    EXPECT_EQ(report["program"], PROJECT_VERSION);
    EXPECT_EQ(report["provider"], "simulated");
    EXPECT_EQ(report["time"].toString().size(), 29);
    const QJsonObject parts = report["parts"].toObject();
    EXPECT_EQ(parts.size(), 16);
    for (const auto& part : parts)
        EXPECT_TRUE(part.isArray());
    EXPECT_EQ(parts["serial-number"], (QJsonArray{QJsonObject{{"serial-number", 100001}}}));
    const QJsonObject memory = parts["memory"][0]["contents"].toObject();
    EXPECT_EQ(memory["bytes"], 65536);
    EXPECT_EQ(memory["sha256"].toString().size(), 64);
    EXPECT_FALSE(memory.contains("base64")) << "a report is no backup";
}

TEST_F(ServiceConsoleReport, SaysInItsPlaceWhatIsMissingOrFailsAndGoesOn)
{
    const Outcome run = console({"--provider",
                                 "simulated:missing=lo-leakage,missing=serial-number,fault=file-memory.fileList=error,"
                                 "fault=potentiometers.readFromEeprom=error,fault=usb-id.usbId=throw",
                                 "report", "--html", page, "--json"});
    EXPECT_EQ(run.status, 0);
    const QJsonObject parts = run.json()["parts"].toObject();
    EXPECT_EQ(parts["serial-number"], (QJsonObject{{"error", "missing"}}));
    EXPECT_FALSE(parts["files"]["error"].toString().isEmpty());
    EXPECT_FALSE(parts["usb-id"]["error"].toString().isEmpty());
    EXPECT_EQ(parts["potentiometers"][0]["error"], "cannot be read");
    EXPECT_EQ(parts["usb-ids"].toArray().size(), 5);
    EXPECT_TRUE(parts["settings"].toArray().contains(QJsonObject{{"module", "lo-leakage"}, {"error", "missing"}}));
    EXPECT_THAT(read(page).toStdString(), AllOf(HasSubstr("<p class=\"error\">missing</p>"),
                                                HasSubstr("<td class=\"error\">cannot be read</td>")));
    EXPECT_THAT(console({"--missing", "serial-number", "report"}).output, HasSubstr("\nSerial number: missing\n"));
}

TEST_F(ServiceConsoleReport, IsAPageOfItsOwnWithEverythingEscaped)
{
    const Outcome run =
        shell("files put \"" + write("local", "").toUtf8() + "\" \"<script>alert('1')</script>&Größe\"\n"
              + "report --html \"" + page.toUtf8() + "\"\n");
    EXPECT_EQ(run.status, 0) << run.errors;
    const QByteArray html = read(page);
    EXPECT_THAT(console({"report", "--html", "-"}).output, EndsWith("</html>\n")) << "nothing comes behind the page";
    EXPECT_THAT(html.toStdString(), StartsWith("<!DOCTYPE html>"));
    for (const char* part : {"@media print", "<thead>", "color-scheme: light dark"})
        EXPECT_THAT(html.toStdString(), HasSubstr(part));
    for (const char* part : {"<script", "<link", "src=", "href=", "url(", "http"})
        EXPECT_THAT(html.toStdString(), Not(HasSubstr(part)));

    QXmlStreamReader reader(html);
    int tables = 0;
    bool named = false;
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement) {
            tables += reader.name() == u"table" ? 1 : 0;
            if (reader.name() == u"td")
                named = reader.readElementText() == "<script>alert('1')</script>&Größe" || named;
        }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_EQ(tables, 16) << "one for each part but the records of terms, and one for the versions";
    EXPECT_TRUE(named);
    expectError({"report", "--html", folder.filePath("no/such/folder")}, 1, "cannot be written");
}

} // namespace tov::testing
