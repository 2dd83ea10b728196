#include "small_library.h"

#include "platform/slide_writer.h"

namespace velmo {

namespace {

QByteArray Slide(std::uint8_t colour, int size) {
    SlideWriter writer(199, 149);
    writer.SetColour(colour);
    writer.AddLine({10, 10}, {10 + size, 10});
    writer.AddLine({10 + size, 10}, {10, 10 + size});
    writer.AddLine({10, 10 + size}, {10, 10});
    return writer.Bytes();
}

QStringList Definition(const QStringList& variables) {
    return QStringList{"symbol", "$VAR"} + variables + QStringList{"$GEO", "LINE 0 0 1 1"};
}

} // namespace

QStringList HexTableLines() {
    return {"",
            "3",
            "1",
            "ｺﾒﾝﾄ",
            "6",
            "0",
            "呼び",
            "2",
            "V0001",
            "5",
            "1",
            "d",
            "3",
            "V0002",
            "5",
            "0",
            "L",
            "4",
            "   M10   10   50",
            "   M10   10   60",
            "   M12   12   50",
            "   M12   12   80"};
}

void WriteSmallLibrary(const VelmoSession& session) {
    session.WriteHomeLines("syst\\vlmsymlib.lst",
                           {R"(("トルヴィク,  ,")", R"( ("ボルト,  \BOLT\BOLT.SLD,")",
                            R"(  ("六角ボルト,  \BOLT\HEX.SLD,  \BOLT\HEX.TXT"))",
                            R"(  ("アイボルト,  \BOLT\EYE.SLD,  \BOLT\EYE.TXT"))",
                            R"(  ("記号,  \BOLT\MARK.SLD,  \BOLT\MARK.TXT"))", " )",
                            R"( ("座金,  \WASH\WASH.SLD,")", R"(  ("大形,  \WASH\LARGE.SLD,")",
                            R"(   ("平座金,  \WASH\WASHER.SLD,  \WASH\WASHER.TXT"))", "  )", " )", ")"});
    const QStringList hex = {R"(V1=PRO("d",10))", R"(V2=PRO("L",50))", R"(V3=PRO("材質",SS400))"};
    session.WriteHomeLines("SMB\\BOLT\\HEX.TXT", Definition(hex));
    session.WriteHomeLines("SMB\\BOLT\\HEX.PMN", HexTableLines());
    session.WriteHomeLines("SMB\\BOLT\\EYE.TXT", Definition({R"(V1=PRO("d",8))", R"(V7=PRO("個数",1))"}));
    session.WriteHomeLines("SMB\\BOLT\\MARK.TXT", Definition({}));
    session.WriteHomeLines("SMB\\WASH\\WASHER.TXT", Definition({R"(V1=PRO("d",6))", R"(V2=PRO("L",1))"}));
    session.WriteHomeLines("SMB\\WASH\\WASHER.PMN", HexTableLines());
    session.WriteHome("SMB\\BOLT\\BOLT.SLD", Slide(1, 100));
    session.WriteHome("SMB\\BOLT\\HEX.SLD", Slide(2, 120));
    session.WriteHome("SMB\\BOLT\\EYE.SLD", Slide(3, 80));
    session.WriteHome("SMB\\WASH\\WASH.SLD", Slide(4, 60));
    session.WriteHome("SMB\\WASH\\WASHER.SLD", Slide(6, 90));
}

} // namespace velmo
