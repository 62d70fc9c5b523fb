// The ticket's keys and the keys inside its dictionaries, defined once for
// everything that reads or writes a ticket: the model, the panels, the
// job-ticket writer and import, the print path. Spelled exactly as stored
// tickets have them (including "OPISubsitution", "HiglightPrintingColor" and
// the "k" of "kCoatingType" and "kGrain").
#pragma once

#include <string_view>

namespace zorva::tkey {

// ---- Options ------------------------------------------------------------------
inline constexpr std::string_view kOptions = "com.zorva.print.JOTFOptions";
inline constexpr std::string_view kOptionAll = "JOTFOptionAll";
inline constexpr std::string_view kOptionCovers = "JOTFOptionCovers";
inline constexpr std::string_view kOptionInserts = "JOTFOptionInserts";
inline constexpr std::string_view kOptionExceptions = "JOTFOptionExceptions";

// ---- Media and special pages ----------------------------------------------------
inline constexpr std::string_view kJobLevelStock = "com.zorva.print.JobLevelStock";
inline constexpr std::string_view kFrontCover = "com.zorva.print.SpecialPages.FrontCover";
inline constexpr std::string_view kBackCover = "com.zorva.print.SpecialPages.BackCover";
inline constexpr std::string_view kInsertList = "com.zorva.print.SpecialPages.InsertList";
inline constexpr std::string_view kExceptionList = "com.zorva.print.SpecialPages.ExceptionList";

// Inside a special page.
inline constexpr std::string_view kStock = "Stock";
inline constexpr std::string_view kSidesImaged = "SidesImaged";
inline constexpr std::string_view kQuantity = "Quantity";
inline constexpr std::string_view kStartPage = "StartPage";
inline constexpr std::string_view kEndPage = "EndPage";
inline constexpr std::string_view kPageImageShift = "com.zorva.print.ImageShiftOptionsPage";
inline constexpr std::string_view kPageLightenDarken = "LightenDarken";
inline constexpr std::string_view kPageFullColor = "FullColorOptionsPage";
inline constexpr std::string_view kPageAntialiasing = "Antialiasing";
inline constexpr std::string_view kPageHalftoneScreen = "HalftoneScreen";
inline constexpr std::string_view kPageOutputColor = "OutputColor";

// Inside a stock.
inline constexpr std::string_view kSize = "Size";
inline constexpr std::string_view kWidth = "Width";
inline constexpr std::string_view kLength = "Length";
inline constexpr std::string_view kType = "Type";
inline constexpr std::string_view kCustomType = "CustomType";
inline constexpr std::string_view kModulus = "Modulus";
inline constexpr std::string_view kColor = "Color";
inline constexpr std::string_view kCustomColor = "CustomColor";
inline constexpr std::string_view kWeight = "Weight";
inline constexpr std::string_view kPunched = "Punched";
inline constexpr std::string_view kDescription = "Description";
inline constexpr std::string_view kSidesCoated = "SidesCoated";
inline constexpr std::string_view kCoatingType = "kCoatingType";
inline constexpr std::string_view kFinish = "Finish";
inline constexpr std::string_view kGrain = "kGrain";
inline constexpr std::string_view kCustomName = "CustomName";
inline constexpr std::string_view kCustomNameOnly = "CustomNameOnly";
inline constexpr std::string_view kSource = "Source";
inline constexpr std::string_view kCustomComment = "CustomComment";

// Image shift dictionaries (job and page).
inline constexpr std::string_view kImageShiftJob = "com.zorva.print.ImageShiftOptionsJob";
inline constexpr std::string_view kImageShiftOption = "Option";
inline constexpr std::string_view kImageShiftOption2Sided = "Option2Sided";
inline constexpr std::string_view kInches = "Inches";
inline constexpr std::string_view kX1 = "X1";
inline constexpr std::string_view kY1 = "Y1";
inline constexpr std::string_view kX2 = "X2";
inline constexpr std::string_view kY2 = "Y2";
inline constexpr std::string_view kFullPrecision = "FullPrecision";

// ---- Job attributes ---------------------------------------------------------------
inline constexpr std::string_view kFinishingDuplex = "com.zorva.print.FinishingDuplex";
inline constexpr std::string_view kPMDuplexing = "com.apple.print.PrintSettings.PMDuplexing";
inline constexpr std::string_view kOutputDestination = "com.zorva.print.FinishingOutputDestination";
inline constexpr std::string_view kResolution = "com.zorva.print.Resolution";
inline constexpr std::string_view kOPISubstitution = "com.zorva.print.OPISubsitution";
inline constexpr std::string_view kOPIPrescan = "com.zorva.print.OPIPrescan";
inline constexpr std::string_view kAntialiasing = "com.zorva.print.Antialiasing";
inline constexpr std::string_view kHalftoneScreen = "com.zorva.print.HalftoneScreen";
inline constexpr std::string_view kLightenDarken = "com.zorva.print.LightenDarken";
inline constexpr std::string_view kTonerSaver = "com.zorva.print.TonerSaver";
inline constexpr std::string_view kOutputOrder = "com.zorva.print.OutputOrder";
inline constexpr std::string_view kPrinterEmulation = "com.zorva.print.TaltekEmulation";
inline constexpr std::string_view kRotateImage180 = "com.zorva.print.AdvancedRotateImage180";
inline constexpr std::string_view kOutputColor = "com.zorva.print.FinishingOutputColor";

// Job notes, job name and user.
inline constexpr std::string_view kJobNotesMessage = "com.zorva.print.JobNotesMessage";
inline constexpr std::string_view kJobNotesRecipient = "com.zorva.print.JobNotesRecipient";
inline constexpr std::string_view kJobNotesSheetMessage = "com.zorva.print.JobNotesSheetMessage";
inline constexpr std::string_view kJobNotesAdditionalInfo =
    "com.zorva.print.JobNotesAdditionalInfo";
inline constexpr std::string_view kJobNotesUseJobName = "com.zorva.print.JobNotesUseJobName";
inline constexpr std::string_view kJobNotesJobName = "com.zorva.print.JobNotesJobName";
inline constexpr std::string_view kJobNotesSenderName = "com.zorva.print.JobNotesSenderName";
inline constexpr std::string_view kPMJobName = "com.apple.print.JobInfo.PMJobName";

// Accounting.
inline constexpr std::string_view kAccountingOn = "com.zorva.Act.jotf.On";
inline constexpr std::string_view kAccountingUserId = "com.zorva.Act.jotf.UID";
inline constexpr std::string_view kAccountingAccountId = "com.zorva.Act.jotf.AID";

// Pages to print.
inline constexpr std::string_view kPagesToPrintSelected = "com.zorva.print.PagesToPrintSelected";
inline constexpr std::string_view kPagesToPrintFrom = "com.zorva.print.PagesToPrintFrom";
inline constexpr std::string_view kPagesToPrintTo = "com.zorva.print.PagesToPrintTo";

// Finishing and offset.
inline constexpr std::string_view kFinishingOptions = "com.zorva.print.FinishingOptions";
inline constexpr std::string_view kFinishingZFold = "com.zorva.print.FinishingZFoldValue";
inline constexpr std::string_view kFinishingStaple1 = "com.zorva.print.FinishingStaple1Value";
inline constexpr std::string_view kFinishingStaple2 = "com.zorva.print.FinishingStaple2Value";
inline constexpr std::string_view kFinishingStapleCenter =
    "com.zorva.print.FinishingStapleCenterValue";
inline constexpr std::string_view kFinishingHolePunch = "com.zorva.print.FinishingHolePunchValue";
inline constexpr std::string_view kFinishingHolePunchOptions =
    "com.zorva.print.FinishingHolePunchOptions";
inline constexpr std::string_view kFinishingFold = "com.zorva.print.FinishingFoldValue";
inline constexpr std::string_view kFinishingBind = "com.zorva.print.FinishingBindValue";
inline constexpr std::string_view kBookletFoldStaple = "com.zorva.print.BookletFoldStaple";
inline constexpr std::string_view kFinishingSlipSheet = "com.zorva.print.FinishingSlipSheet";
inline constexpr std::string_view kFinishingCustom = "com.zorva.print.FinishingCustom";
inline constexpr std::string_view kFinishingOffset = "com.zorva.print.FinishingOffset";
inline constexpr std::string_view kFinishingOffsetEnableSubset =
    "com.zorva.print.FinishingOffsetEnableSubset";
inline constexpr std::string_view kFinishingOffsetPagesPerSubset =
    "com.zorva.print.FinishingOffsetPagesPerSubset";

// Saved job.
inline constexpr std::string_view kJobType = "com.zorva.print.JobType";
inline constexpr std::string_view kJobTypeJobType = "JobType";
inline constexpr std::string_view kJobTypeSaveDisposition = "SaveDisposition";
inline constexpr std::string_view kJobTypeMediaType = "MediaType";
inline constexpr std::string_view kJobTypeUseJobName = "UseJobName";
inline constexpr std::string_view kJobTypeSavedJobName = "SavedJobName";
inline constexpr std::string_view kJobTypeSavedJobLocation = "SavedJobLocation";

// Colour: the job's full colour options and an exception page's.
inline constexpr std::string_view kFullColorOptions = "com.zorva.print.FullColorOptions";
inline constexpr std::string_view kFCLightness = "FCLightness";
inline constexpr std::string_view kFCContrast = "FCContrast";
inline constexpr std::string_view kFCSaturation = "FCSaturation";
inline constexpr std::string_view kFCColorCast = "FCColorCast";
inline constexpr std::string_view kFCCyanRed = "FCCyanRed";
inline constexpr std::string_view kFCMagentaGreen = "FCMagentaGreen";
inline constexpr std::string_view kFCYellowBlue = "FCYellowBlue";
inline constexpr std::string_view kFCTrapping = "FCTrapping";
inline constexpr std::string_view kFCTrappingFast = "FCTrappingFastDirection";
inline constexpr std::string_view kFCTrappingSlow = "FCTrappingSlowDirection";
inline constexpr std::string_view kFCBlackOverprint = "FCBlackOverprint";
inline constexpr std::string_view kFCTRC = "FCTRC";
inline constexpr std::string_view kRGBImagesProfile = "RGBImagesProfile";
inline constexpr std::string_view kRGBTextAndGraphicsProfile = "RGBTextAndGraphicsProfile";
inline constexpr std::string_view kCMYKImagesProfile = "CMYKImagesProfile";
inline constexpr std::string_view kCMYKTextAndGraphicsProfile = "CMYKTextAndGraphicsProfile";
inline constexpr std::string_view kGrayImagesProfile = "GrayImagesProfile";
inline constexpr std::string_view kGrayTextAndGraphicsProfile = "GrayTextAndGraphicsProfile";
inline constexpr std::string_view kDestinationProfile = "DestinationProfile";
inline constexpr std::string_view kImageRendering = "ImageRendering";
inline constexpr std::string_view kTextRendering = "TextRendering";
inline constexpr std::string_view kGraphicRendering = "GraphicRendering";

// Highlight colour (the job's dictionary; the whole settings are read too).
inline constexpr std::string_view kHighlightColorOptionsJob =
    "com.zorva.print.HighlightColorOptionsJob";
inline constexpr std::string_view kHighlightPrintingColor = "HiglightPrintingColor";
inline constexpr std::string_view kHighlightCustomColorIndex = "HighlightCustomColorIndex";
inline constexpr std::string_view kHighlightCustomColor = "HighlightCustomColor";
inline constexpr std::string_view kColorRed = "Red";
inline constexpr std::string_view kColorGreen = "Green";
inline constexpr std::string_view kColorBlue = "Blue";
inline constexpr std::string_view kColorHue = "Hue";
inline constexpr std::string_view kColorSaturation = "Saturation";
inline constexpr std::string_view kColorValue = "Value";

// Background forms.
inline constexpr std::string_view kBackgroundForms = "com.zorva.print.BackgroundFormsOptions";
inline constexpr std::string_view kUseExistingForm = "UseExistingForm";
inline constexpr std::string_view kMergeWithString = "MergeWithString";
inline constexpr std::string_view kCyclePages = "CyclePages";
inline constexpr std::string_view kNewFormString = "NewFormString";
inline constexpr std::string_view kUseDocumentName = "UseDocumentName";
inline constexpr std::string_view kApplyPagesFrom = "ApplyPagesFrom";
inline constexpr std::string_view kExistingFormsArray = "ExistingFormsArray";
inline constexpr std::string_view kNewFormsArray = "NewFormsArray";

// ---- Page format and print settings -------------------------------------------------
// The paper's width and length in points (1/72 inch, numbers) and the
// orientation (0 to 3; absent means 0).
inline constexpr std::string_view kPMPaperWidth = "com.apple.print.PageFormat.PMPaperWidth";
inline constexpr std::string_view kPMPaperLength = "com.apple.print.PageFormat.PMPaperLength";
inline constexpr std::string_view kPMOrientation = "com.apple.print.PageFormat.PMOrientation";
inline constexpr std::string_view kPMCopies = "com.apple.print.PrintSettings.PMCopies";
inline constexpr std::string_view kPMCopyCollate = "com.apple.print.PrintSettings.PMCopyCollate";
inline constexpr std::string_view kPMFirstPage = "com.apple.print.PrintSettings.PMFirstPage";
inline constexpr std::string_view kPMLastPage = "com.apple.print.PrintSettings.PMLastPage";

// ---- Booklet and watermark ------------------------------------------------------------
inline constexpr std::string_view kBookletLayout = "com.zorva.print.BookletLayout";
inline constexpr std::string_view kBookletDrawOutlines = "com.zorva.print.BookletDrawOutlines";
inline constexpr std::string_view kGutter = "com.zorva.print.Gutter";
inline constexpr std::string_view kCreep = "com.zorva.print.Creep";
// The host removes kRotateBooklet180 on every saving sync, so the panel keeps
// its choice under a key of its own.
inline constexpr std::string_view kBookletRotate180 = "com.zorva.print.BookletRotate180";
// The chosen watermark's name (absent or empty: no watermark) and its two
// options, booleans stored only when true. The print path and the watermark
// filter read the same keys.
inline constexpr std::string_view kWatermarkName = "com.zorva.print.WatermarkName";
inline constexpr std::string_view kWatermarkFirstPageOnly =
    "com.zorva.print.WatermarkFirstPageOnly";
inline constexpr std::string_view kWatermarkInFront = "com.zorva.print.WatermarkInFront";

// ---- Items the host adds on export ------------------------------------------------
inline constexpr std::string_view kRotateBooklet180 = "com.zorva.print.RotateBooklet180Degrees";
inline constexpr std::string_view kControllerFamily =
    "com.zorva.print.ControllerInformation.ControllerFamily";
inline constexpr std::string_view kControllerVersion =
    "com.zorva.print.ControllerInformation.ControllerVersion";
inline constexpr std::string_view kClientUserName = "com.zorva.print.ClientInformation.UserName";
inline constexpr std::string_view kClientComputerName =
    "com.zorva.print.ClientInformation.ComputerName";
inline constexpr std::string_view kClientIPAddress = "com.zorva.print.ClientInformation.IPAddress";

// ---- Advanced panel ---------------------------------------------------------------
inline constexpr std::string_view kAdvancedBookletLayoutOrder =
    "com.zorva.print.AdvancedBookletLayoutOrderStr";
inline constexpr std::string_view kEmitJOTF = "com.zorva.print.EmitJOTF";
inline constexpr std::string_view kBookletForceNewSize = "com.zorva.print.BookletForceNewSize";

}  // namespace zorva::tkey
