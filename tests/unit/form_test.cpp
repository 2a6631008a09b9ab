#include "runtime/form.h"

#include "runtime/events.h"
#include "runtime/runtime_error.h"
#include "unit/program_test.h"

namespace swiftpatch {
namespace {

using testing::ElementsAre;

FormDesign SampleDesign(bool endsRun) {
    FormDesign design;
    design.caption = "Sample";
    design.unloadEndsRun = endsRun;
    return design;
}

class SampleForm : public Form {
public:
    explicit SampleForm(bool endsRun = false)
        : Form("Sample", SampleDesign(endsRun)),
          first(*this, 1, "first"),
          second(*this, 2, "second"),
          timer(*this, 3, "timer") {
        SetTabOrder({&second});
    }

    CommandButton first, second;
    Timer timer;
    std::function<void()> load;
    std::function<void(bool&)> query;
    std::function<void()> unload;
    int queries = 0;
    int unloads = 0;

    void Form_Load() override {
        headless::TheWorld().trace.Add("Form_Load");
        if (load) {
            load();
        }
    }
    void Form_QueryUnload(bool& cancel) override {
        ++queries;
        if (query) {
            query(cancel);
        }
    }
    void Form_Unload() override {
        ++unloads;
        headless::TheWorld().trace.Add("Form_Unload");
        if (unload) {
            unload();
        }
    }
};

class FormLife : public ProgramTest {
protected:
    SampleForm form;
};

TEST_F(FormLife, FirstShowLoadsTheFormHiddenThenShowsIt) {
    form.load = [this] { EXPECT_FALSE(form.Visible()); };
    form.Show();
    EXPECT_THAT(world.trace.Lines(), ElementsAre("Sample.Load", "Form_Load", "Sample.Show"));
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.Loaded());
}

TEST_F(FormLife, LaterShowsDoNotLoadAgain) {
    form.Show();
    form.Hide();
    EXPECT_FALSE(form.Visible());
    form.Show();
    EXPECT_EQ(world.trace.Count("Form_Load"), 1U);
    EXPECT_EQ(world.trace.Lines().back(), "Sample.Show");
}

TEST_F(FormLife, HandleLoadsTheFormWithoutShowingIt) {
    EXPECT_NE(form.Handle(), 0);
    EXPECT_THAT(world.trace.Lines(), ElementsAre("Sample.Load", "Form_Load"));
    EXPECT_FALSE(form.Visible());
}

TEST_F(FormLife, UnloadAsksThenUnloadsThenDestroys) {
    form.Show();
    form.query = [this](bool&) { world.trace.Add("query"); };
    world.trace.Clear();
    form.Unload();
    EXPECT_THAT(world.trace.Lines(), ElementsAre("query", "Form_Unload", "Sample.Destroy"));
    EXPECT_FALSE(form.Loaded());
    EXPECT_FALSE(form.Visible());
}

TEST_F(FormLife, RefusedQueryKeepsTheForm) {
    form.Show();
    form.query = [](bool& cancel) { cancel = true; };
    form.Unload();
    EXPECT_TRUE(form.Loaded());
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.unloads, 0);
    form.query = {};
    form.Unload();
    EXPECT_FALSE(form.Loaded());
}

TEST_F(FormLife, UnloadTwiceUnloadsOnce) {
    form.Show();
    form.Unload();
    form.Unload();
    EXPECT_EQ(form.queries, 1);
    EXPECT_EQ(form.unloads, 1);
    EXPECT_EQ(world.trace.Count("Sample.Destroy"), 1U);
}

TEST_F(FormLife, FormThatWasNeverLoadedIsNotUnloaded) {
    form.Unload();
    form.UnloadUnasked();
    EXPECT_FALSE(form.QueryUnload());
    EXPECT_TRUE(world.trace.Lines().empty());
    EXPECT_EQ(form.queries, 0);
}

TEST_F(FormLife, CloseWhileTheQuestionIsOpenIsIgnored) {
    form.Show();
    form.query = [this](bool&) {
        form.Unload();
        form.UnloadUnasked();
        EXPECT_FALSE(form.QueryUnload());
    };
    form.Unload();
    EXPECT_EQ(form.queries, 1);
    EXPECT_EQ(form.unloads, 1);
}

TEST_F(FormLife, CloseWhileARefusedQuestionIsOpenKeepsTheForm) {
    form.Show();
    form.query = [this](bool& cancel) {
        form.Unload();
        cancel = true;
    };
    form.Unload();
    EXPECT_EQ(form.queries, 1);
    EXPECT_TRUE(form.Loaded());
}

TEST_F(FormLife, CloseInsideTheUnloadIsIgnored) {
    form.Show();
    form.unload = [this] { form.Unload(); };
    form.Unload();
    EXPECT_EQ(form.unloads, 1);
    EXPECT_EQ(form.queries, 1);
}

TEST_F(FormLife, QuestionThatEndsInAnErrorCanBeAskedAgain) {
    form.Show();
    form.query = [](bool&) { throw RuntimeError(error_number::kOverflow); };
    EXPECT_THROW(form.Unload(), RuntimeError);
    form.query = {};
    form.Unload();
    EXPECT_FALSE(form.Loaded());
}

TEST_F(FormLife, TheTwoHalvesAskFirstAndUnloadLater) {
    form.Show();
    EXPECT_TRUE(form.QueryUnload());
    EXPECT_TRUE(form.Loaded());
    form.UnloadUnasked();
    EXPECT_EQ(form.queries, 1);
    EXPECT_EQ(form.unloads, 1);
    EXPECT_FALSE(form.Loaded());
}

TEST_F(FormLife, UnloadDoesNotEndTheRunUnlessDesignedTo) {
    form.Show();
    world.Close(form);
    EXPECT_FALSE(world.RunOver());
}

TEST_F(FormLife, UnloadEndsTheRunAtTheNextPumpWhereDesignedTo) {
    SampleForm last(true);
    last.Show();
    bool beforePump = false;
    bool afterPump = false;
    world.Dispatch([&] {
        last.Unload();
        beforePump = true;
        DoEvents();
        afterPump = true;
    });
    EXPECT_TRUE(beforePump);
    EXPECT_FALSE(afterPump);
    EXPECT_TRUE(world.RunOver());
}

TEST_F(FormLife, RefusedUnloadDoesNotEndTheRun) {
    SampleForm last(true);
    last.Show();
    last.query = [](bool& cancel) { cancel = true; };
    last.Unload();
    EXPECT_FALSE(world.RunOver());
}

TEST_F(FormLife, TimersOfAnUnloadedFormFireNoMore) {
    int ticks = 0;
    form.timer.Interval = 10;
    form.timer.Elapsed = [&ticks] { ++ticks; };
    form.timer.Enabled = true;
    form.Show();
    world.PumpFor(15);
    EXPECT_EQ(ticks, 1);
    form.Unload();
    world.PumpFor(100);
    EXPECT_EQ(ticks, 1);
}

TEST_F(FormLife, ModalShowReturnsOnceTheFormIsGone) {
    world.user.AtDialog("Sample", [](Form& shown) {
        EXPECT_TRUE(shown.Visible());
        shown.Unload();
    });
    form.ShowModal();
    EXPECT_THAT(world.trace.Lines(), ElementsAre("Sample.Load", "Form_Load", "Sample.ShowModal",
                                                 "Form_Unload", "Sample.Destroy"));
}

TEST_F(FormLife, GivenControlsComeFirstInTheTabOrder) {
    EXPECT_THAT(form.Controls(), ElementsAre(&form.second, &form.first));
}

TEST_F(FormLife, PaintingStaysUntilItIsCleared) {
    form.PaintBox({0, 0, 1, 1, Color::kBlack});
    form.PaintBox({0, 0, 2, 2, Color::kWhite});
    EXPECT_EQ(form.Painting().size(), 2U);
    form.ClearPainting();
    EXPECT_TRUE(form.Painting().empty());
}

class MarkedForm : public SampleForm {
public:
    ~MarkedForm() override { ++destroyed; }
    static inline int destroyed = 0;
};

TEST_F(FormLife, ReleasedInstanceLivesUntilNoProcedureRuns) {
    MarkedForm::destroyed = 0;
    FormInstance<MarkedForm> instance;
    EXPECT_FALSE(instance.Exists());
    instance.Get();
    EXPECT_TRUE(instance.Exists());
    world.Dispatch([&] {
        instance.Release();
        EXPECT_FALSE(instance.Exists());
        world.Dispatch([] {});
        EXPECT_EQ(MarkedForm::destroyed, 0);
    });
    EXPECT_EQ(MarkedForm::destroyed, 1);
    instance.Release();
    DeleteForms();
    EXPECT_EQ(MarkedForm::destroyed, 1);
}

}  // namespace
}  // namespace swiftpatch
