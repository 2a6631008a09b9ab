#include "app/frmSplash1.h"
#include "shared/branding.h"

namespace swiftpatch {
namespace {

/// The resource that holds the splash picture.
constexpr int kSplashPicture = 101;

FormDesign SplashDesign() {
    FormDesign design;
    design.caption = SWIFTPATCH_UPDATER_NAME;
    design.width = 300;
    design.height = 170;
    design.border = BorderStyle::kNone;
    return design;
}

}  // namespace

frmSplash1::frmSplash1()
    : Form("frmSplash1", SplashDesign()),
      Image1(*this, 207, "Image1"),
      lblLoading(*this, 201, "lblLoading"),
      lbltitle0(*this, 202, "lbltitle(0)"),
      lbltitle1(*this, 203, "lbltitle(1)"),
      lblMain0(*this, 204, "lblMain(0)"),
      lblMain1(*this, 205, "lblMain(1)"),
      lblVersion(*this, 206, "lblVersion"),
      lblCopyright(*this, 210, "lblCopyright"),
      cmdExit(*this, 208, "cmdExit"),
      tmrUnload(*this, 209, "tmrUnload") {
    Design();
    tmrUnload.Elapsed = [this] { tmrUnload_Timer(); };
    cmdExit.Click = [this] { cmdExit_Click(); };
}

void frmSplash1::Design() {
    Image1.Place({12, 40, 72, 72});
    Image1.ResourceId = kSplashPicture;
    lbltitle0.Place({9, 9, 284, 20}, {.bold = true, .centered = true, .mnemonics = true});
    lbltitle1.Place({8, 8, 284, 20}, {.bold = true, .centered = true, .mnemonics = true});
    lblMain0.Place({97, 53, 194, 44}, {.bold = true});
    lblMain1.Place({96, 52, 194, 44}, {.bold = true});
    lblVersion.Place({96, 104, 120, 10});
    lblCopyright.Place({12, 122, 220, 20});
    lblLoading.Place({12, 152, 160, 10});
    cmdExit.Place({238, 148, 50, 14});
    for (Label* title : {&lbltitle0, &lbltitle1}) {
        title->Caption.Design(SWIFTPATCH_SHORT_NAME " " SWIFTPATCH_UPDATER_NAME
                                                    " && Technical Support");
        title->FontSize.Design(12);
    }
    for (Label* main : {&lblMain0, &lblMain1}) {
        main->FontSize.Design(12);
    }
    lblVersion.Caption.Design("ver:");
    for (Label* label :
         {&lblLoading, &lbltitle0, &lbltitle1, &lblMain0, &lblMain1, &lblVersion, &lblCopyright}) {
        label->Background.Design(BackStyle::kTransparent);
        label->ForeColor.Design(Color::kWhite);
    }
    lbltitle0.ForeColor.Design(Color::kBlack);
    lblMain0.ForeColor.Design(Color::kBlack);
    cmdExit.Caption.Design("Exit");
    cmdExit.Cancel = true;
    tmrUnload.Interval.Design(1000);
}

}  // namespace swiftpatch
