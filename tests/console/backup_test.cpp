#include "console/consoleprogram.h"
#include "console/scratchfolder.h"
#include "console/settings.h"

#include <QFile>
#include <QJsonArray>

#include <functional>
#include <string>

namespace tov::testing {

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// An instrument, a new one, and a backup of the first.
class Backup : public ScratchFolder
{
protected:
    const QString fresh = folder.filePath("fresh");
    const QString backup = folder.filePath("backup.json");

    void changeSome() const
    {
        const Outcome changed = shell("serial set 4711\ntune set ulk-power rf-power 7\npots set 3 500 --eeprom\n",
                                      {"--state", state, "--yes"});
        EXPECT_EQ(changed.status, 0) << changed.errors;
        save();
    }

    void save() const
    {
        const Outcome saved = console({"--state", state, "backup", "--force", backup});
        EXPECT_EQ(saved.status, 0) << saved.errors;
        EXPECT_THAT(saved.output, HasSubstr("\nsettings        75       yes\n"));
    }

    Outcome restore(const QStringList& more = {}) const
    {
        return console(QStringList{"--state", fresh, "restore", "--yes", backup} + more);
    }

    // The backup with another value in one of its parts.
    QString altered(const QString& part, const std::function<void(QJsonObject& row)>& alter) const
    {
        QJsonObject document = QJsonDocument::fromJson(read(backup)).object();
        QJsonObject parts = document["parts"].toObject();
        QJsonArray rows = parts[part].toArray();
        QJsonObject row = rows[0].toObject();
        alter(row);
        rows[0] = row;
        parts[part] = rows;
        document["parts"] = parts;
        return write("altered.json", QJsonDocument(document).toJson());
    }
};

} // namespace

TEST_F(Backup, BringsANewInstrumentToWhatWasSavedOfAnother)
{
    QByteArray lines = "serial set 4711\nusb set 1 2 3\npots set 3 500 --eeprom\npots set 6 -5 --eeprom\n"
                       "corrections enable 3\ncorrections disable 2\nfiles put \""
                       + write("note.txt", QByteArray("\0\377 note", 7)).toUtf8() + "\"\nfiles put \""
                       + write("empty", "").toUtf8() + "\" empty\nmemory load --pad \""
                       + write("image", QByteArray("pattern")).toUtf8() + "\"\n";
    const QJsonArray settings = console({"--json", "tune", "ls"}).json()["settings"].toArray();
    for (const auto& element : settings) {
        const QJsonObject setting = element.toObject();
        const QStringList words{"tune set", setting["module"].toString(), setting["setting"].toString(),
                                otherValue(setting)};
        if (setting["type"] != "read-only")
            lines += words.join(' ').toUtf8() + "\n";
    }
    const Outcome changed = shell(lines, {"--state", state, "--yes"});
    EXPECT_THAT(changed.errors, Not(HasSubstr("service-console"))) << changed.errors;
    save();

    EXPECT_EQ(console({"--state", fresh, "diff", backup, "instrument"}).status, 1);
    const Outcome restored = restore();
    EXPECT_EQ(restored.status, 0) << restored.output << restored.errors;
    EXPECT_THAT(restored.output, AllOf(StartsWith("part "), HasSubstr("\nfiles           note.txt"),
                                       HasSubstr("potentiometers in RAM"), Not(HasSubstr("failed"))));
    const Outcome differences = console({"--state", fresh, "diff", backup, "instrument"});
    EXPECT_EQ(differences.status, 0);
    EXPECT_EQ(differences.output, "");
    EXPECT_THAT(restore().output, StartsWith("nothing to change\n")) << "it can be repeated";
}

TEST_F(Backup, TakesFilesAwayThatWereNotSaved)
{
    changeSome();
    ASSERT_EQ(console({"--state", fresh, "files", "put", write("later", "x")}).status, 0);
    EXPECT_EQ(restore({"--only", "files"}).status, 0);
    EXPECT_THAT(console({"--state", fresh, "--json", "files", "ls"}).json()["files"].toArray(), IsEmpty());
    EXPECT_EQ(console({"--state", fresh, "serial", "get"}).output, "100001\n");
}

TEST_F(Backup, ShowsWhatWouldChangeAndChangesNothing)
{
    changeSome();
    const QJsonArray changes = restore({"--dry-run", "--json"}).json()["changes"].toArray();
    ASSERT_EQ(changes.size(), 3);
    EXPECT_EQ(changes[0].toObject(), (QJsonObject{{"part", "serial-number"},
                                                  {"item", "-"},
                                                  {"was", "100001"},
                                                  {"becomes", "4711"},
                                                  {"outcome", "would be written"}}));
    EXPECT_EQ(restore({"--dry-run", "--json"}).json()["changes"].toArray(), changes);
    expectError({"--state", fresh, "restore", backup}, 2, "--yes is needed to make 3 changes");
    EXPECT_EQ(restore({"--dry-run", "--json"}).json()["changes"].toArray(), changes);
    expectError({"backup", backup}, 1, "is there already; --force replaces it");
}

TEST_F(Backup, RestoresOnlyWhatIsAskedFor)
{
    changeSome();
    EXPECT_EQ(restore({"--only", "serial-number", "--only", "potentiometers"}).status, 0);
    EXPECT_EQ(console({"--state", fresh, "serial", "get"}).output, "4711\n");
    EXPECT_EQ(console({"--state", fresh, "pots", "get", "3"}).output, "500\n");
    EXPECT_EQ(console({"--state", fresh, "tune", "get", "ulk-power", "rf-power"}).output, "32\n");
    expectError({"restore", backup, "--yes", "--only", "nonsense"}, 2,
                "unknown part 'nonsense'; there are memory, files");
    expectError({"restore", backup, "--yes", "--only", "terms-flag"}, 2, "unknown part 'terms-flag'");
}

TEST_F(Backup, GoesOnAfterAFailureAndCanBeRepeated)
{
    changeSome();
    const Outcome failed = console({"--provider", "simulated:fault=potentiometers.writeToEeprom=error,state=" + fresh,
                                    "restore", "--yes", backup});
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.output,
                HasSubstr("potentiometers  3/Reference tune    512     500      failed: cannot be written\n"));
    EXPECT_THAT(failed.output, HasSubstr("settings        ulk-power/rf-power  32      7        written\n"));
    EXPECT_EQ(failed.errors, "service-console: 1 of 3 changes failed, the others are made; restore can be repeated\n");
    EXPECT_EQ(console({"--state", fresh, "tune", "get", "ulk-power", "rf-power"}).output, "7\n");
    EXPECT_EQ(restore().status, 0);
    EXPECT_EQ(console({"--state", fresh, "diff", "instrument", backup}).status, 0);
}

TEST_F(Backup, LeavesAMemoryOfAnotherSizeAlone)
{
    changeSome();
    for (const QStringList& options : {QStringList{"--dry-run"}, QStringList()}) {
        const Outcome run = console(QStringList{"--provider", "simulated:memory-size=131072,state=" + fresh, "restore",
                                                "--yes", "--only", "memory", backup}
                                    + options);
        EXPECT_EQ(run.status, options.isEmpty() ? 1 : 0);
        EXPECT_THAT(run.output, HasSubstr(": another size: 131072 instead of 65536 bytes\n"));
        EXPECT_THAT(run.errors, options.isEmpty() ? "service-console: 1 of 1 changes failed; restore can be repeated\n"
                                                  : std::string());
    }
}

TEST_F(Backup, SaysWhatTheInstrumentCannotTake)
{
    ASSERT_EQ(console({"backup", backup}).status, 0);
    const auto run = [&](const QString& file, const QStringList& options = {}) {
        return console(options + QStringList{"restore", "--yes", file});
    };
    const QString correction = altered("corrections", [](QJsonObject& row) { row["enabled"] = false; });
    EXPECT_THAT(run(correction).output, HasSubstr("correction-1  on   off      failed: it is not modifiable\n"));
    const QString potentiometer = altered("potentiometers", [](QJsonObject& row) { row["name"] = "Another"; });
    EXPECT_THAT(run(potentiometer).output, HasSubstr("failed: the instrument has no such potentiometer\n"));
    const QString setting = altered("settings", [](QJsonObject& row) { row["value"] = QJsonValue(); });
    EXPECT_THAT(run(setting).output, HasSubstr("failed: there is no way back to none\n"));
    const Outcome missing = run(backup, {"--missing", "serial-number"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.output, HasSubstr("serial-number  -     -    100001   failed: missing\n"));
}

TEST_F(Backup, SaysWhatWasNotSaved)
{
    EXPECT_THAT(console({"--missing", "serial-number", "backup", backup}).output,
                HasSubstr("\nserial-number   missing  yes\n"));
    const Outcome restored = restore();
    EXPECT_EQ(restored.status, 0);
    EXPECT_THAT(restored.output, HasSubstr("serial-number was not saved: missing\n"));
    expectError({"restore", backup, "--yes", "--only", "serial-number"}, 1, "parts.serial-number: this was not saved");

    const Outcome incomplete =
        console({"--provider", "simulated:fault=potentiometers.readFromEeprom=error", "backup", backup, "--force"});
    EXPECT_EQ(incomplete.status, 1);
    EXPECT_THAT(incomplete.errors, HasSubstr("lacks what could not be read: potentiometers (cannot be read)"));
    EXPECT_EQ(restore().status, 0) << "with all the others";

    ASSERT_EQ(console({"--missing", "file-memory", "backup", "--force", backup}).status, 0);
    ASSERT_EQ(console({"--state", fresh, "files", "put", write("kept", "x")}).status, 0);
    EXPECT_EQ(restore().status, 0);
    EXPECT_THAT(console({"--state", fresh, "files", "ls"}).output, HasSubstr("kept"));
}

TEST_F(Backup, IsRefusedWithItsPlaceBeforeAnythingIsChanged)
{
    changeSome();
    const auto refuses = [&](const QString& file, const std::string& says) {
        expectError({"--state", fresh, "restore", "--yes", file}, 1, file.toStdString() + ", " + says);
    };
    refuses(write("broken", "{"), "byte 1: ");
    refuses(write("list", "[]"), "format: this is no report and no backup");
    refuses(write("terms", R"({"time": "2026-01-31T12:00:00Z"})"), "format: this is no report and no backup");
    refuses(write("newer", R"({"format": "service-console backup", "version": 2})"),
            "version: a newer service-console");
    refuses(write("none", R"({"format": "service-console backup", "version": 0})"), "version: expected 1");
    refuses(write("empty", R"({"format": "service-console backup", "version": 1})"), "parts: expected an object");
    const QByteArray head = R"({"format": "service-console backup", "version": 1, "parts": )";
    refuses(write("name", head + R"({"colour": []}})"), "parts.colour: expected another name");
    refuses(write("number", head + R"({"files": 1}})"), "parts.files: expected a list");
    refuses(write("row", head + R"({"files": [1]}})"), "parts.files[0]: expected an object");
    refuses(write("column", head + R"({"files": [{"nme": "x"}]}})"), "parts.files[0].nme: expected another name");
    refuses(write("top", R"({"format": "service-console backup", "version": 1, "partz": {}})"),
            "partz: expected another name");
    refuses(write("twice", head + R"({"files": [{"name": "x"}, {"name": "y"}, {"name": "x"}]}})"),
            "parts.files[2]: expected another row than [0]");
    refuses(write("report", console({"--json", "report"}).output.c_str()), "format: a report cannot be restored");

    const auto refusesRow = [&](const QString& part, const std::function<void(QJsonObject&)>& alter,
                                const std::string& says) {
        refuses(altered(part, alter), "parts." + part.toStdString() + "[0]." + says);
    };
    const auto with = [](const char* column, const QJsonValue& value) {
        return [=](QJsonObject& row) { row[QLatin1StringView(column)] = value; };
    };
    refusesRow("serial-number", with("serial-number", -1), "serial-number: expected a whole number");
    refusesRow("serial-number", with("serial-number", 1.5), "serial-number: expected a whole number");
    refusesRow("usb-id", with("id2", "0x10000"), "id2: expected a whole number");
    refusesRow("potentiometers", with("eeprom", "x"), "eeprom: expected a whole number");
    refusesRow("corrections", with("enabled", 1), "enabled: expected true or false");
    refusesRow("settings", with("value", 1), "value: expected on|off");
    refusesRow("settings", with("setting", "nonsense"), "setting: expected one that this program knows");
    refusesRow("settings", with("module", "nonsense"), "setting: expected one that this program knows");
    refusesRow("memory", with("contents", QJsonObject{{"base64", "%"}}), "contents: expected contents in base64");
    refusesRow(
        "memory",
        [](QJsonObject& row) {
            QJsonObject contents = row["contents"].toObject();
            contents["base64"] = "AAAA";
            row["contents"] = contents;
        },
        "contents: expected contents of this size and digest");
    expectError({"restore", "--yes", folder.filePath("nothing")}, 1, "cannot be read");
    EXPECT_FALSE(QFile::exists(fresh));
}

TEST_F(Backup, IsShownInTheColumnsThatAreWanted)
{
    changeSome();
    expectError({"--columns", "nonsense", "--state", fresh, "restore", "--yes", backup}, 2, "unknown column");
    EXPECT_FALSE(QFile::exists(fresh)) << "nothing was changed";
    EXPECT_EQ(restore({"--dry-run", "--columns", "item", "--filter", "tune", "--only", "potentiometers"})
                  .output.substr(0, 22),
              "item\n3/Reference tune\n");
    EXPECT_EQ(console({"--columns", "path", "diff", backup, "instrument"}).output.substr(0, 19),
              "path\nserial-number\n");
}

TEST_F(Backup, IsComparedWithReportsAndInstruments)
{
    changeSome();
    const QString report = write("report.json", console({"--state", state, "--json", "report"}).output.c_str());
    EXPECT_EQ(console({"diff", backup, report}).status, 0) << "contents by their digests";
    const Outcome different = console({"diff", report, "instrument"});
    EXPECT_EQ(different.status, 1);
    EXPECT_THAT(different.errors, IsEmpty());
    EXPECT_THAT(different.output, AllOf(StartsWith("path "), HasSubstr("\nsettings/ulk-power/rf-power "),
                                        HasSubstr("\npotentiometers/3/Reference tune/eeprom  500 ")));
    EXPECT_EQ(console({"--json", "diff", "instrument", report}).json()["differences"][0].toObject(),
              (QJsonObject{{"path", "serial-number"}, {"a", "100001"}, {"b", "4711"}}));
    EXPECT_EQ(console({"diff", "instrument", "instrument"}).status, 0);

    expectError({"diff", backup, folder.filePath("nothing")}, 2, "cannot be read");
    expectError({"diff", backup, write("foreign", "{}")}, 2, "format: this is no report and no backup");
    expectError({"--provider", "simulated:fault=memory-operations.read=error", "diff", "instrument", "instrument"}, 2,
                "instrument, memory cannot be compared: cannot be read");
    expectError({"--provider", "simulated:fault=potentiometers.readFromEeprom=error", "diff", backup, "instrument"}, 2,
                "instrument, potentiometers cannot be compared: cannot be read");
    EXPECT_EQ(console({"--missing", "serial-number", "diff", "instrument", "instrument"}).status, 0);
    expectError({"diff", backup}, 2, "required");
    expectError({"--state", folder.filePath("no/such/folder"), "diff", backup, "instrument"}, 2, "folder");
}

} // namespace tov::testing
