#include "formats/FormatList.h"

#include "formats/binary/CapMakerPlus.h"
#include "formats/binary/CheetahCaption.h"
#include "formats/binary/Ebu.h"
#include "formats/line/AvidCaption.h"
#include "formats/line/Csv.h"
#include "formats/line/Csv2.h"
#include "formats/line/Csv3.h"
#include "formats/line/Json.h"
#include "formats/line/JsonType2.h"
#include "formats/line/JsonType3.h"
#include "formats/line/JsonType4.h"
#include "formats/line/QuickTimeText.h"
#include "formats/line/Scenarist.h"
#include "formats/line/SoftNiSub.h"
#include "formats/line/SonyDVDArchitect.h"
#include "formats/line/SonyDVDArchitectExplicitDuration.h"
#include "formats/line/SonyDVDArchitectLineAndDuration.h"
#include "formats/line/SonyDVDArchitectTabs.h"
#include "formats/line/SubRip.h"
#include "formats/line/SwiftInterchange2.h"
#include "formats/line/WebVTT.h"
#include "formats/line/YouTubeSbv.h"
#include "formats/line/YouTubeTranscript.h"
#include "formats/scc/ScenaristClosedCaptions.h"
#include "formats/scc/ScenaristClosedCaptionsDropFrame.h"
#include "formats/script/BelleNuitSubtitler.h"
#include "formats/script/Sami.h"
#include "formats/script/SamiModern.h"
#include "formats/script/SubStationAlpha.h"
#include "formats/xml/DCinemaSmpte2007.h"
#include "formats/xml/DCinemaSmpte2010.h"
#include "formats/xml/FinalCutProXCM.h"
#include "formats/xml/FinalCutProXXml.h"
#include "formats/xml/FinalCutProXml.h"
#include "formats/xml/FinalCutProXmlGap.h"
#include "formats/xml/FlashXml.h"
#include "formats/xml/ItunesTimedText.h"
#include "formats/xml/TimedText10.h"
#include "formats/xml/TimedText200604.h"
#include "formats/xml/TimedText200604ttml.h"
#include "formats/xml/TimedText200604xml.h"
#include "formats/xml/YouTubeAnnotations.h"

namespace mova {
namespace {

template <typename Format>
std::unique_ptr<SubtitleFormat> create() {
  return std::make_unique<Format>();
}

/// One row for each format. The order decides: among formats that would all take a file the first one wins.
constexpr std::unique_ptr<SubtitleFormat> (*formats[])() = {
    create<AvidCaption>,                       // "Avid Caption" .txt
    create<BelleNuitSubtitler>,                // "Belle Nuit Subtitler" .stp
    create<CapMakerPlus>,                      // "CapMaker Plus" .cap
    create<CheetahCaption>,                    // "Cheetah Caption" .cap
    create<Csv>,                               // "Csv" .csv
    create<Csv2>,                              // "Csv2" .csv
    create<Csv3>,                              // "Csv3" .csv
    create<DCinemaSmpte2007>,                  // "D-Cine SMPTE 2007" .xml
    create<DCinemaSmpte2010>,                  // "D-Cine SMPTE 2010" .xml
    create<Ebu>,                               // "EBU STL" .stl
    create<FinalCutProXml>,                    // "Final Cut Pro Xml" .xml
    create<FinalCutProXmlGap>,                 // "Final Cut Xml Gap" .fcpxml
    create<FinalCutProXXml>,                   // "Final Cut Pro X Xml" .fcpxml
    create<FinalCutProXCM>,                    // "Final Cut Pro XCM" .fcpxml
    create<FlashXml>,                          // "Flash Xml" .xml
    create<ItunesTimedText>,                   // "iTunes Timed Text" .itt
    create<Json>,                              // "JSON" .json
    create<JsonType2>,                         // "JSON Type 2" .json
    create<JsonType3>,                         // "JSON Type 3" .json
    create<JsonType4>,                         // "JSON Type 4" .json
    create<QuickTimeText>,                     // "QuickTime text" .txt
    create<Sami>,                              // "SAMI" .smi
    create<SamiModern>,                        // "SAMI modern" .smi
    create<Scenarist>,                         // "Scenarist" .txt
    create<ScenaristClosedCaptions>,           // "DVD_SCC" .scc
    create<ScenaristClosedCaptionsDropFrame>,  // "DVD_SCCDF" .scc
    create<SoftNiSub>,                         // "SoftNi sub" .sub
    create<SonyDVDArchitect>,                  // "Sony DVDArchitect" .sub
    create<SonyDVDArchitectExplicitDuration>,  // "Sony DVD Exp dur" .sub
    create<SonyDVDArchitectLineAndDuration>,   // "Sony DVD line/dur" .txt
    create<SonyDVDArchitectTabs>,              // "Sony DVD Tabs" .sub
    create<SubRip>,                            // "SubRip" .srt
    create<SubStationAlpha>,                   // "Sub Station Alpha" .ssa
    create<SwiftInterchange2>,                 // "Swift V2" .sif
    create<TimedText10>,                       // "Timed Text 1.0" .xml
    create<TimedText200604>,                   // "TT 2006-04 .dfxp" .dfxp
    create<TimedText200604ttml>,               // "TT 2006-04 .ttml" .ttml
    create<TimedText200604xml>,                // "TT 2006-04 .xml" .xml
    create<WebVTT>,                            // "WebVTT" .vtt
    create<YouTubeAnnotations>,                // "YT Annotations" .xml
    create<YouTubeSbv>,                        // "YouTube sbv" .sbv
    create<YouTubeTranscript>,                 // "YouTube Transcript" .txt
};

}  // namespace

void buildFormatList(FormatList& list) {
  list.clear();
  for (const auto& createFormat : formats) list.push_back(createFormat());
}

}  // namespace mova
