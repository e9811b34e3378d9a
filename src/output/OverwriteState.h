#pragma once
// The overwrite answers of one run: whether a batch run is going on, the lasting answers
// "Yes to All" and "No to All", and the one-picture answers that the question hands back
// to the saver (cleared by the saver right after).
namespace quorbel {

struct OverwriteState {
    bool BatchActive = false;
    bool YesToAll = false;
    bool WriteThis = false;
    bool NoToAll = false;
    bool SkipThis = false;
};

// The process-wide state the windows and the batch run share.
OverwriteState& Overwrite();

}  // namespace quorbel
