#include "dataentry/DataEntryItem.h"

#include <gtest/gtest.h>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "tests/support/FormHost.h"

namespace {

TEST(DataEntryItem, StartsWithoutValueAndPlace) {
    IntegerDataEntryItem number;
    FloatDataEntryItem decimal(2.5);
    TextDataEntryItem text;
    for (const DataEntryItem* item :
         {static_cast<DataEntryItem*>(&number), static_cast<DataEntryItem*>(&decimal),
          static_cast<DataEntryItem*>(&text)}) {
        EXPECT_EQ(item->IsNull(), 1);
        EXPECT_EQ(item->IsReadOnly(), 0);
        EXPECT_EQ(item->GetIndex(), 65535);
    }
    EXPECT_EQ(decimal.GetValue(), 2.5);
    EXPECT_EQ(IntegerDataEntryItem(3, "Age").IsNull(), 0);
    EXPECT_EQ(TextDataEntryItem("", "Name").IsNull(), 0);
    EXPECT_EQ(TextDataEntryItem(nullptr, "Name").IsNull(), 1);
    EXPECT_STREQ(number.GetLabel(), "65536");
    EXPECT_TRUE(number.IsKindOf(RUNTIME_CLASS(DataEntryItem)));
    EXPECT_FALSE(number.IsKindOf(RUNTIME_CLASS(TextDataEntryItem)));
}

TEST(DataEntryItem, FlagsReturnWhatTheyWereAndValuesFollowTheirRules) {
    IntegerDataEntryItem number(7, "n");
    EXPECT_EQ(number.SetNull(1), 0);
    EXPECT_EQ(number.GetValue(), 0);
    EXPECT_EQ(number.SetValue(9), 0);
    EXPECT_EQ(number.IsNull(), 0);
    EXPECT_EQ(number.SetNull(0), 0);
    EXPECT_EQ(number.GetValue(), 0) << "clearing the flag clears the number, too";
    EXPECT_EQ(number.SetReadOnly(5), 0);
    EXPECT_EQ(number.SetReadOnly(0), 1);

    FloatDataEntryItem decimal(2.5, "d");
    EXPECT_EQ(decimal.SetValue(1.5), 2.5);
    EXPECT_EQ(decimal.IsNull(), 0);
    decimal.SetNull(1);
    EXPECT_EQ(decimal.GetValue(), 1.5);

    TextDataEntryItem text(nullptr, "t");
    text.SetValue("abc");
    EXPECT_EQ(text.IsNull(), 1);
    EXPECT_STREQ(text.GetValue(), "abc");
    text.SetNull(0);
    EXPECT_STREQ(text.GetValue(), "");
}

TEST(DataEntryItem, AGeneratedLabelStays) {
    auto* form = new DataEntryCtl(new SingleColLayoutMgr);
    auto* ui = new tessalink::test::SizedItemUI({CSize(10, 10)});
    for (int i = 0; i < 5; ++i) form->AddItem(new IntegerDataEntryItem, ui);
    DataEntryItem* item = form->GetItem(4);
    EXPECT_STREQ(item->GetLabel(), "5");
    EXPECT_EQ(item->GetInterfaceIdx(), 0);
    item->SetLabel("Own");
    EXPECT_STREQ(item->GetLabel(), "Own");
    delete form;
}

}  // namespace
