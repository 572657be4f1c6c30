// A scene saver: a line for each polygon, its colour and then its corners, "teal 0,0 2,0 1,1".
#pragma once

#include "hostsdk/CTzLineFormat.h"
#include "hostsdk/CTzSceneSaver.h"

class OutlineSaver : public CTzSceneSaver {
  public:
    explicit OutlineSaver(const CTzPtr<ITzHost>& host) : CTzSceneSaver(CTzUser_Host(host)) {}

  protected:
    CTzFileFormat* format() noexcept override { return &file_; }

    // Before the save: what it will lose.
    void verifyScene() override {
        startItemScan(kTzItemMesh);
        while (nextItem()) {
            const TzBox box = meshBounds();
            if (box.extent.z == 0) continue;
            postMessage(kTzMessagesCommon, kTzMessageWarning, {"heights along z are not saved"});
            return;
        }
    }

    // The framework has opened the file, and closes it; with a preparatory pass it calls this twice.
    TzResult saveScene() override {
        startItemScan(kTzItemMesh);
        while (nextItem()) {
            points_.clear();
            scanPoints();    // calls visitPoint()
            scanPolygons();  // calls visitPolygon()
        }
        return kTzOk;
    }

    void visitPoint() override { points_.push_back(pointPosition()); }

    void visitPolygon() override {
        const std::string* const colour = polygonTag(tzTag("FILL"));
        file_.writeText(colour ? *colour : "black");
        for (const uint32_t vertex : polygonVertices()) {
            file_.writeText(" ");
            file_.writeReal(points_[vertex].x, false);
            file_.writeText(",");
            file_.writeReal(points_[vertex].y, false);
        }
        file_.lineBreak(true);
    }

  private:
    CTzLineFormat file_;
    std::vector<TzPoint> points_;
};
