#include "plugin/rules/ObjectMatrixRecords.h"

#include "tests/plugin/PluginFixture.h"

#include <random>

namespace {

class ObjectMatrixRecordsTest : public PluginTest {
protected:
    ObjectMatrixRecord& Add(EditorObject* object, float mark) {
        ObjectMatrixRecord& record = records.Add(object);
        record.matrix[12] = mark;
        return record;
    }

    std::vector<float> Marks() const {
        std::vector<float> marks;
        for (const ObjectMatrixRecord& record : records) {
            marks.push_back(record.matrix[12]);
        }
        return marks;
    }

    ObjectMatrixRecords records;
    EditorObject* cart = editor.Create("Cart");
    EditorObject* crane = editor.Create("Crane");
};

TEST_F(ObjectMatrixRecordsTest, AnObjectWithoutARecordHasNone) {
    EXPECT_EQ(records.Find(cart), nullptr);
    records.RemoveFirst(cart);
    records.RemoveAll(cart);
    EXPECT_TRUE(records.empty());
}

TEST_F(ObjectMatrixRecordsTest, DoublesGoOneByOneFromTheFirst) {
    Add(cart, 1);
    Add(crane, 2);
    Add(cart, 3);
    Add(cart, 4);
    EXPECT_EQ(records.Find(cart)->matrix[12], 1.0f);
    records.RemoveFirst(cart);
    EXPECT_EQ(records.Find(cart)->matrix[12], 3.0f);
    EXPECT_EQ(Marks(), (std::vector<float>{2, 3, 4}));
    records.RemoveFirst(cart);
    records.RemoveFirst(cart);
    EXPECT_EQ(records.Find(cart), nullptr);
    EXPECT_EQ(Marks(), (std::vector<float>{2}));
}

TEST_F(ObjectMatrixRecordsTest, AllOfAnObjectGoTogether) {
    Add(cart, 1);
    Add(crane, 2);
    Add(cart, 3);
    records.RemoveAll(cart);
    EXPECT_EQ(Marks(), (std::vector<float>{2}));
    EXPECT_EQ(records.Find(crane)->matrix[12], 2.0f);
    records.clear();
    EXPECT_EQ(records.Find(crane), nullptr);
    EXPECT_EQ(Add(crane, 5).object, crane);
    EXPECT_EQ(records.Find(crane)->matrix[12], 5.0f);
}

TEST_F(ObjectMatrixRecordsTest, AnyOrderOfStepsGivesWhatAPlainListGives) {
    const std::vector<EditorObject*> objects = {cart, crane, editor.Create("Boat"), editor.Create("Buoy")};
    std::list<ObjectMatrixRecord> plain;
    std::mt19937 random(7);
    for (int step = 0; step < 2000; ++step) {
        EditorObject* object = objects[random() % objects.size()];
        const auto first = std::ranges::find(plain, object, &ObjectMatrixRecord::object);
        if (random() % 2 == 0) {
            Add(object, static_cast<float>(step));
            plain.push_back({object, {}});
            plain.back().matrix[12] = static_cast<float>(step);
        } else if (first != plain.end()) {
            records.RemoveFirst(object);
            plain.erase(first);
        }
        for (EditorObject* each : objects) {
            const auto expected = std::ranges::find(plain, each, &ObjectMatrixRecord::object);
            const ObjectMatrixRecord* found = records.Find(each);
            ASSERT_EQ(found != nullptr, expected != plain.end()) << "step " << step;
            ASSERT_TRUE(found == nullptr || found->matrix[12] == expected->matrix[12]) << "step " << step;
        }
    }
    EXPECT_EQ(records.size(), plain.size());
}

} // namespace
