#include "MeshRepair.h"

#include <QuarnKit/Formats/Obj/Repair/ObjRepairer.h>
#include <QuarnKit/Formats/Stl/StlDefect.h>
#include <QuarnKit/Formats/Stl/StlMeshReader.h>

namespace quarn {

namespace {

std::vector<MeshRepair> repairStl(MeshText& text, Observer& observer) {
    ObjSource& source = text.source;
    const auto defect = findStlDefect(source.text);
    source.text = objTextOfStl(source.name, source.text, observer);
    text.format = ScreenFormat::Obj;
    if (!defect) return {};
    return {{.name = defect->name, .text = defect->found}};
}

}  // namespace

std::vector<MeshRepair> repairMesh(MeshText& text, Observer& observer) {
    if (text.format == ScreenFormat::Stl) return repairStl(text, observer);
    ObjSource& source = text.source;
    RepairedObj repaired = repairObj(source.name, source.text);
    if (const auto notice = selfIntersectionNotice(source.name, repaired)) observer.notify(*notice);
    source.text = std::move(repaired.text);
    source.lineMap = std::move(repaired.lineMap);
    std::vector<MeshRepair> repairs;
    for (const ObjRepairs::Tally& tally : repaired.repairs.tallies())
        repairs.push_back({.name = repairName(tally.repair),
                           .text = repairText(tally),
                           .count = tally.count,
                           .line = tally.firstLine});
    return repairs;
}

void noteRepairs(const std::string& name, const std::vector<MeshRepair>& repairs, Observer& observer) {
    for (const MeshRepair& repair : repairs)
        observer.notify({.text = "repaired " + repair.text, .file = name, .line = repair.line});
}

}  // namespace quarn
