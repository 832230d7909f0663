#include <fstream>
#include <gmock/gmock.h>
#include <random>
#include <regex>
#include <sstream>

#include "corvane/part/Part.h"

#include "../../modules/part/reading/StepText.h"
#include "../../modules/part/reading/StepThreads.h"
#include "../../modules/part/reading/ThreadText.h"
#include "Shapes.h"
#include "support/TemporaryFolder.h"

using corvane::part::Hole;
using corvane::part::Part;
using corvane::part::Thread;
using corvane::part::ThreadSource;
using corvane::part::reading::decodeStepText;
using corvane::part::reading::stepThreads;
using corvane::part::reading::threadIn;

namespace {

/// A plate with a hole of 5 mm and one of 8 mm, each cylinder one face, as the text of a STEP file.
std::string plateWithHoles() {
    TopoDS_Shape plate = shapes::box(60, 40, 20);
    plate = shapes::cut(plate, shapes::cylinder({{20, 20, -1}, {0, 0, 1}}, 2.5, 22));
    plate = shapes::cut(plate, shapes::cylinder({{40, 20, -1}, {0, 0, 1}}, 4, 22));
    const TemporaryFolder folder;
    shapes::write(plate, folder.path("plate.step"));
    std::ifstream file(folder.path("plate.step"));
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

class ThreadsTest : public testing::Test {
protected:
    /// The part of the plate's file with further instances; `@` is the face of the smaller hole,
    /// `&` that of the larger one, `%` a context.
    std::shared_ptr<const Part> with(std::string instances) {
        std::smatch context;
        const std::regex contexts("#(\\d+) = \\( GEOMETRIC_REPRESENTATION_CONTEXT");
        EXPECT_TRUE(std::regex_search(text_, context, contexts));
        instances = replaced(instances, "%", "#" + context[1].str());
        instances = replaced(replaced(instances, "@", small_), "&", large_);
        std::string text = text_;
        text.insert(text.rfind("ENDSEC;"), instances + "\n");
        return open(text);
    }
    std::shared_ptr<const Part> open(const std::string& text) {
        folder_.write("part.step", text);
        const auto opened = Part::open(folder_.path("part.step"));
        EXPECT_EQ(opened.error, "");
        return opened.part;
    }

    const std::string text_ = plateWithHoles();
    const std::string small_ = shapes::faceOfCylinder(text_, 2.5),
                      large_ = shapes::faceOfCylinder(text_, 4);
    TemporaryFolder folder_;
};

std::string designationOf(const Part& part, double diameter) {
    for (const Hole& hole : part.holes())
        if (std::abs(hole.diameter - diameter) < 1e-6)
            return hole.thread == 0 ? ""
                                    : part.model()
                                          .threads[static_cast<std::size_t>(hole.thread - 1)]
                                          .designation;
    return "no hole";
}

}  // namespace

TEST_F(ThreadsTest, AreFollowedFromEveryTextToTheFacesOfItsHole) {
    const std::string aspect =
        "#9001=SHAPE_ASPECT('hole','',#4,.T.);"
        "#9002=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#9001,#10,@);";
    const std::string item =
        "#9011=PROPERTY_DEFINITION_REPRESENTATION(#9010,#9012);"
        "#9012=REPRESENTATION('',(#9013),%);"
        "#9013=DESCRIPTIVE_REPRESENTATION_ITEM('thread','M6 x 1 - 6H');";
    struct Way {
        const char* name;
        std::string instances;
        ThreadSource source;
    };
    const Way ways[]{
        {"property of an aspect",
         aspect + "#9010=PROPERTY_DEFINITION('user defined attribute','',#9001);" + item,
         ThreadSource::Property},
        {"property of a part of an aspect",
         aspect +
             "#9003=COMPOSITE_SHAPE_ASPECT('','',#4,.T.);"
             "#9004=SHAPE_ASPECT_RELATIONSHIP('','',#9003,#9001);"
             "#9010=PROPERTY_DEFINITION('','',#9003);" +
             item,
         ThreadSource::Property},
        {"feature",
         "#9001=(CHARACTERIZED_OBJECT('','')FEATURE_DEFINITION()INSTANCED_FEATURE()"
         "SHAPE_ASPECT('','',#4,.T.)THREAD());"
         "#9002=PROPERTY_DEFINITION('','',#9001);#9003=SHAPE_DEFINITION_REPRESENTATION(#9002,#9004)"
         ";"
         "#9004=SHAPE_REPRESENTATION('',(@),%);#9010=PROPERTY_DEFINITION('','',#9001);" +
             item,
         ThreadSource::Property},
        {"dimension",
         aspect + "#9010=DIMENSIONAL_SIZE(#9001,'diameter');"
                  "#9011=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#9010,#9012);"
                  "#9012=SHAPE_DIMENSION_REPRESENTATION('',(#9013),%);"
                  "#9013=DESCRIPTIVE_REPRESENTATION_ITEM('','M6x1-6H');",
         ThreadSource::Dimension},
        {"annotation",
         aspect +
             "#9020=DRAUGHTING_CALLOUT('hole callout',(#9024));"
             "#9024=ANNOTATION_OCCURRENCE('',(),$);"
             "#9021=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#9001,#9022,#9020);"
             "#9010=PROPERTY_DEFINITION('pmi validation property','',#9023);"
             "#9023=CHARACTERIZED_ITEM_WITHIN_REPRESENTATION('','',#9024,#9022);"
             "#9022=DRAUGHTING_MODEL('',(#9020),%);" +
             item,
         ThreadSource::Annotation},
        {"name of an aspect", replaced(aspect, "'hole'", "'M6\\X2\\00D7\\X0\\1-6H'"),
         ThreadSource::Aspect}};
    for (const Way& way : ways) {
        SCOPED_TRACE(way.name);
        const auto part = with(way.instances);
        ASSERT_TRUE(part);
        EXPECT_EQ(designationOf(*part, 5), "M6x1-6H");
        EXPECT_EQ(designationOf(*part, 8), "");
        ASSERT_EQ(part->model().threads.size(), 1U);
        const Thread& thread = part->model().threads[0];
        EXPECT_EQ(thread.source, way.source);
        EXPECT_EQ(thread.faces.size(), 1U);
        EXPECT_EQ(thread.diameter, 6.0);
        EXPECT_EQ(thread.pitch, 1.0);
    }
}

TEST_F(ThreadsTest, OfTheBoreComeBeforeThoseOfItsStepsAndAnAssemblyHasThemEverywhere) {
    // The counterbore's face has a thread of its own, and comes first in the file.
    TopoDS_Shape plate = shapes::box(60, 40, 20);
    plate = shapes::cut(plate, shapes::cylinder({{20, 20, -1}, {0, 0, 1}}, 2.5, 22));
    plate = shapes::cut(plate, shapes::cylinder({{20, 20, 12}, {0, 0, 1}}, 4, 22));
    gp_Trsf by;
    by.SetTranslation({0, 0, 50});
    const std::string file = folder_.path("two.step");
    shapes::write(shapes::compound({plate, plate.Moved(by)}), file);
    shapes::nameCylinder(file, 4, "Gewinde M8");
    shapes::nameCylinder(file, 2.5, "M6x0,75 LH");
    const auto part = Part::open(file).part;
    ASSERT_TRUE(part);
    ASSERT_EQ(part->holes().size(), 2U);
    for (const Hole& hole : part->holes()) {
        const Thread& thread = part->model().threads[static_cast<std::size_t>(hole.thread - 1)];
        EXPECT_EQ(thread.designation, "M6x0.75-LH");
        EXPECT_EQ(thread.source, ThreadSource::Face);
        EXPECT_EQ(thread.faces.size(), 2U);
    }
}

TEST_F(ThreadsTest, NamesOfPartsAndLooseTextsNameNoHole) {
    const auto part = with(
        "#9001=PRODUCT('Bolt M6x1','Bolt M6x1','',());"
        "#9002=DESCRIPTIVE_REPRESENTATION_ITEM('','M6x1');"
        "#9003=SHAPE_ASPECT('M6x1','',#4,.T.);"
        "#9004=PROPERTY_DEFINITION('M6x1','',#4);"
        "#9005=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#9006,#10,@);");
    ASSERT_TRUE(part);
    EXPECT_EQ(part->model().threads.size(), 0U);
}

TEST(ThreadTextTest, KnowsWhatStandardsWrite) {
    struct Row {
        const char* text;
        const char* designation;
        double diameter, pitch;
    };
    constexpr double kInch = 25.4;
    const Row rows[]{{"M6x1 - 6H", "M6x1-6H", 6, 1},
                     {"m10 \u00D7 1,25", "M10x1.25", 10, 1.25},
                     {"4xM8-1.25 THRU", "M8x1.25", 8, 1.25},
                     {"4X M6 - 6H DEPTH 12", "M6-6H", 6, 0},
                     {"MJ6x1-4H5H", "MJ6x1-4H5H", 6, 1},
                     {"M1.6x0.35-LH", "M1.6x0.35-LH", 1.6, 0.35},
                     {"THREADED HOLE M20", "M20", 20, 0},
                     {"M6x20 thread", "M6", 6, 0},
                     {"1/4-20 UNC-2B", "1/4-20 UNC-2B", kInch / 4, kInch / 20},
                     {".250-28UNF - 2B", "0.25-28 UNF-2B", kInch / 4, kInch / 28},
                     {"1 1/4-7 UNC", "1 1/4-7 UNC", 1.25 * kInch, kInch / 7},
                     {"#10-24 UNC-2B", "#10-24 UNC-2B", 0.19 * kInch, kInch / 24},
                     {"0-80 UNF", "0-80 UNF", 0.06 * kInch, kInch / 80},
                     {"3-12 UN", "3-12 UN", 3 * kInch, kInch / 12},
                     {"G1/2 B", "G1/2", 20.955, kInch / 14},
                     {"Rp 3/4", "Rp3/4", 26.441, kInch / 14},
                     {"1/4-18 NPT", "1/4 NPT", 0.54 * kInch, kInch / 18},
                     {"NPTF 1/8", "1/8 NPTF", 0.405 * kInch, kInch / 27},
                     {"Tr 40 x 7", "Tr40x7", 40, 7}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto found = threadIn(row.text, false);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->text, row.designation);
        EXPECT_NEAR(found->diameter, row.diameter, 1e-9);
        EXPECT_NEAR(found->pitch, row.pitch, 1e-9);
    }
    for (const char* const value : {"M6", "R1/2", "G 1", "(4) M6 TIEF 12"})
        EXPECT_TRUE(threadIn(value, true) && !threadIn(value, false)) << value;
    for (const char* const other :
         {"", "M", "M6x20", "SM6x1", "M6-7", "M6_2", "M61234", "M0.5x0.1", "R5", "G7/3", "R0.5",
          "1/4-20", "20 UNC", "Face 12", "M6 bolt hole", "Tr5", "1/0-20 UNC", "#-20 UNC", "M1e3"})
        EXPECT_FALSE(threadIn(other, true)) << other;
}

TEST(ThreadTextTest, HostileTextsAreCutAndCounted) {
    EXPECT_EQ(
        decodeStepText("it''s \\X2\\03B103B2\\X0\\ \\X\\E9 \\S\\D \\\\ \\X4\\0001F600\\X0\\", 99),
        "it's \u03B1\u03B2 \u00E9 \u00C4 \\ \U0001F600");
    EXPECT_EQ(decodeStepText("a\\X2\\00E9\\X0\\", 2), "a");
    for (const char* const broken : {"\\X2\\", "\\X2\\12", "\\X4\\zzzzzzzz", "\\X\\", "\\S\\",
                                     "\\P", "\\X2\\D8000020\\X0", "'", "\\"})
        EXPECT_LE(decodeStepText(broken, 10).size(), 10U);
    std::mt19937 random(5);
    const std::string whole =
        "#1=ADVANCED_FACE('M6x1',(),#2,.T.);#3=(A('M8x1')B(#1));/* #4= */"
        "#5=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#3,#9,#1);#6=SHAPE_ASPECT_RELATIONSHIP('','',#3,#3)"
        ";"
        "#7=PROPERTY_DEFINITION('','M4x0.7',#7);";
    EXPECT_EQ(stepThreads(whole).size(), 2U);
    constexpr std::string_view kBytes = "#'();,=/*\\X2\"3M9\n";
    for (int i = 0; i < 3000; ++i) {
        std::string text = whole;
        for (int k = 0; k < 4; ++k)
            text[random() % text.size()] = kBytes[random() % kBytes.size()];
        for (const auto& thread : stepThreads(text))
            EXPECT_LE(thread.thread.text.size(), 200U);
    }
    // Each aspect has the one before as its part, twice: the way is long, but gone once.
    std::string chain =
        "#1=ADVANCED_FACE('',(),#2,.T.);#9=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#10,#3,#1);";
    for (int i = 10; i < 20000; ++i)
        for (int k = 0; k < 2; ++k)
            chain += "#" + std::to_string(i * 10 + k) +
                     "00000=SHAPE_ASPECT_RELATIONSHIP('M6x1','',#" + std::to_string(i + 1) + ",#" +
                     std::to_string(i) + ");";
    EXPECT_LE(stepThreads(chain + "#20000=SHAPE_ASPECT('M7x1','',#4,.T.);").size(), 10000U);
}
