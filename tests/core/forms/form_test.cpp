// The life of a form: loading, closing, unloading, finding controls, and beginning as designed each time.
#include "forms/form.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace brenvik {
namespace {

class TestForm : public Form {
  public:
    TestForm()
        : Form("frmTest", "Test"),
          check(Add<CheckControl>(ControlKind::CheckBox, "Check1(3)", "Box")),
          list(Add<ListControl>(ControlKind::ComboBox, "cboCol(0)")),
          many(Add<ListControl>(ControlKind::ListBox, "lstMany", true)),
          bar(Add<ToolbarControl>("tbMain", std::vector<ToolbarControl::Key>{{"SORT", "Sort", false}})),
          text(Add<Control>(ControlKind::TextBox, "Text1", "35")),
          view(Add<ListViewControl>("lvMap")),
          tabs(Add<TabStripControl>("TabStrip1", std::vector<std::string>{"a", "b"})),
          status(Add<StatusBarControl>("sbMain", 2)) {
        width = 100;
        height = 50;
        list.AddItem("design");
        many.AddItem("design");
    }
    CheckControl& check;
    ListControl& list;
    ListControl& many;
    ToolbarControl& bar;
    Control& text;
    ListViewControl& view;
    TabStripControl& tabs;
    StatusBarControl& status;

    int loads = 0, unloads = 0;
    bool refuse = false, failOnLoad = false, failOnUnload = false;
    bool loadedAtUnload = false;

  protected:
    void OnLoad() override {
        ++loads;
        if (failOnLoad) throw TypeMismatch("setting");
    }
    bool OnQueryClose() override { return !refuse; }
    void OnUnload() override {
        ++unloads;
        loadedAtUnload = Loaded();
        Unload();
        if (failOnUnload) throw PermissionDenied("settings");
    }
};

TEST(Form, LoadsOnceUntilItIsUnloaded) {
    TestForm form;
    form.Load();
    form.Load();
    EXPECT_EQ(form.loads, 1);
    form.Unload();
    EXPECT_FALSE(form.Loaded());
    form.Load();
    EXPECT_EQ(form.loads, 2);
}

TEST(Form, IsLoadedWhileItsUnloadRunsAndUnloadsOnce) {
    TestForm form;
    form.Load();
    bool told = false;
    form.onUnloaded = [&] { told = !form.Loaded(); };
    form.Unload();
    form.Unload();
    EXPECT_TRUE(form.loadedAtUnload);
    EXPECT_TRUE(told);
    EXPECT_EQ(form.unloads, 1);
}

TEST(Form, RefusesToCloseWhenItsQuerySaysSo) {
    TestForm form;
    form.Load();
    form.refuse = true;
    EXPECT_FALSE(form.RequestClose());
    EXPECT_TRUE(form.Loaded());
    form.refuse = false;
    EXPECT_TRUE(form.RequestClose());
    EXPECT_FALSE(form.Loaded());
}

TEST(Form, UnloadsByCodeWithoutAsking) {
    TestForm form;
    form.Load();
    form.refuse = true;
    form.Unload();
    EXPECT_FALSE(form.Loaded());
}

TEST(Form, IsNotLoadedAfterAFailedLoad) {
    TestForm form;
    form.failOnLoad = true;
    EXPECT_THROW(form.Load(), Failure);
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(form.unloads, 0);
}

TEST(Form, IsUnloadedAfterAFailedUnload) {
    TestForm form;
    form.Load();
    form.failOnUnload = true;
    EXPECT_THROW(form.Unload(), Failure);
    EXPECT_FALSE(form.Loaded());
}

TEST(Form, FindsControlsWithoutRegardToCase) {
    TestForm form;
    EXPECT_EQ(form.Find("CHECK1(3)"), &form.check);
    EXPECT_EQ(form.Find("cbocol(0)"), &form.list);
    EXPECT_EQ(form.Find("tbMain.SORT"), &form.bar);
    EXPECT_EQ(form.Find("cboCol(1)"), nullptr);
    EXPECT_EQ(form.Find(""), nullptr);
    EXPECT_EQ(&form.Get<CheckControl>("check1(3)"), &form.check);
}

TEST(FormDeathTest, EndsTheProgramForAControlThatMustBeThere) {
    TestForm form;
    EXPECT_DEATH(form.Get<CheckControl>("Check9"), "frmTest has a control Check9");
    EXPECT_DEATH(form.Get<CheckControl>("cboCol(0)"), "cboCol");
}

TEST(Form, BeginsAsDesignedAtEachLoad) {
    TestForm form;
    form.Load();
    form.check.SetValue(1);
    form.check.visible = false;
    form.list.AddItem("Oak");
    form.list.SetListIndex(1);
    form.many.SetSelected(0, true);
    form.text.SetText("36");
    form.text.enabled = false;
    form.text.tag = "x";
    form.view.rows.push_back({"a", "", "", {}});
    form.tabs.SetSelectedTab(1);
    form.status.panels[0] = "Ready";
    form.width = form.height = form.left = form.top = 200;
    form.caption = "other";
    form.mousePointer = MousePointer::Hourglass;
    form.minimized = true;
    form.Unload();
    // What the form showed can be read until it is loaded again.
    EXPECT_EQ(form.text.Text(), "36");
    bool ran = false;
    form.check.onClick = form.text.onChange = form.tabs.onClick = form.list.onClick = [&] { ran = true; };
    form.Load();
    EXPECT_FALSE(ran);
    EXPECT_EQ(form.check.Value(), 0);
    EXPECT_TRUE(form.check.visible);
    EXPECT_EQ(form.list.Items(), std::vector<std::string>{"design"});
    EXPECT_EQ(form.list.ListIndex(), -1);
    EXPECT_EQ(form.list.Text(), "");
    EXPECT_FALSE(form.many.Selected(0));
    EXPECT_EQ(form.text.Text(), "35");
    EXPECT_TRUE(form.text.enabled);
    EXPECT_EQ(form.text.tag, "");
    EXPECT_TRUE(form.view.rows.empty());
    EXPECT_EQ(form.tabs.SelectedTab(), 0);
    EXPECT_EQ(form.status.panels[0], "");
    EXPECT_EQ(form.width, 100);
    EXPECT_EQ(form.height, 50);
    EXPECT_EQ(form.left, 0);
    EXPECT_EQ(form.top, 0);
    EXPECT_EQ(form.caption, "Test");
    EXPECT_EQ(form.mousePointer, MousePointer::Normal);
    EXPECT_FALSE(form.minimized);
}

}  // namespace
}  // namespace brenvik
