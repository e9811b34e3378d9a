#include "sizes/FitToFileSize.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

#include "imaging/Resampler.h"
#include "output/JpegCodec.h"
#include "sizes/JpegQuality.h"

namespace quorbel {

namespace {

constexpr double kCut = 0.9;            // "H+W": each side keeps 90 % a trial
constexpr int kMaxRefineTrials = 10;    // bounds the upward search after the first fit
constexpr std::array<int, 5> kNamedQualities{95, 85, 75, 65, 50};

struct Size {
    int32_t width = 0;
    int32_t height = 0;
    bool operator==(const Size&) const = default;
};

struct Candidate {
    FitTrial trial;
    cDib picture;  // empty when the trial was the original itself
    std::vector<uint8_t> jpeg;
};

int QualitySteps(int quality) {
    return static_cast<int>(std::count_if(kNamedQualities.begin(), kNamedQualities.end(),
                                          [quality](int q) { return q < quality; }));
}

class Search {
public:
    Search(const cDib& original, const FitRequest& request, const FitProgressFn& progress,
           const std::atomic<bool>* cancel)
        : original_(original), request_(request), progress_(progress), cancel_(cancel) {}

    FitResult Run();

private:
    Size SizeAt(double scale) const;
    int CutsLeft(double scale) const;
    // Resizes from the original and encodes; nullopt once cancelled or when the size could
    // not be made or the encoder refused (stopped_ then says which).
    std::optional<Candidate> Try(Size size, int quality, int trialsLeftGuess);
    void RefineQuality(Candidate& best, Size size, int failingQuality);
    void RefineScale(Candidate& best, double fittingScale, double failingScale);
    FitResult Finish(FitStatus status, FitMode mode, std::optional<Candidate> best);

    const cDib& original_;
    const FitRequest& request_;
    const FitProgressFn& progress_;
    const std::atomic<bool>* cancel_;

    int64_t limit_ = 0;
    Size base_;     // the picture fitted into the maximum size
    Size minimum_;  // never cut below this
    double minScale_ = 1.0;
    std::vector<FitTrial> trials_;
    int lastPercent_ = 0;
    FitStatus stopped_ = FitStatus::Failed;
};

Size Search::SizeAt(double scale) const {
    auto side = [scale](int32_t full, int32_t least) {
        const double v = std::nearbyint(full * scale);
        return static_cast<int32_t>(std::clamp(v, static_cast<double>(least), static_cast<double>(full)));
    };
    return {side(base_.width, minimum_.width), side(base_.height, minimum_.height)};
}

int Search::CutsLeft(double scale) const {
    if (scale <= minScale_) return 0;
    return static_cast<int>(std::ceil(std::log(minScale_ / scale) / std::log(kCut) - 1e-9));
}

std::optional<Candidate> Search::Try(Size size, int quality, int trialsLeftGuess) {
    if (cancel_ && cancel_->load()) {
        stopped_ = FitStatus::Cancelled;
        return std::nullopt;
    }
    Candidate c;
    c.trial = {size.width, size.height, quality, 0, false};
    const bool asIs = size.width == original_.Width() && size.height == original_.Height();
    if (!asIs) {
        // ResizeDib's high-quality path, drawn straight from the original into the trial's
        // own buffer: trials never compound and the original is never copied.
        if (!c.picture.Create(size.width, size.height, 0)) {
            stopped_ = FitStatus::Failed;
            return std::nullopt;
        }
        Resample(original_.View(), c.picture.View(), ResampleFilter::Bicubic);
    }
    const PixelView& pixels = asIs ? original_.View() : c.picture.View();
    if (EncodeJpeg(pixels, quality, c.jpeg) != kJpegOk) {
        stopped_ = FitStatus::Failed;
        return std::nullopt;
    }
    c.trial.bytes = static_cast<int64_t>(c.jpeg.size());
    c.trial.fits = c.trial.bytes <= limit_;
    trials_.push_back(c.trial);
    if (progress_) {
        const int done = static_cast<int>(trials_.size());
        const int percent = std::min(99, done * 100 / (done + std::max(trialsLeftGuess, 1)));
        lastPercent_ = std::max(lastPercent_, percent);
        progress_({lastPercent_, c.trial});
    }
    return c;
}

void Search::RefineQuality(Candidate& best, Size size, int failingQuality) {
    int fitting = best.trial.quality;
    for (int n = 0; failingQuality - fitting > 1 && n < kMaxRefineTrials; ++n) {
        const int mid = fitting + (failingQuality - fitting) / 2;
        const int left = static_cast<int>(std::ceil(std::log2(failingQuality - fitting))) - 1;
        std::optional<Candidate> c = Try(size, mid, left);
        if (!c) return;  // keep what fits so far
        if (c->trial.fits) {
            fitting = mid;
            best = std::move(*c);
        } else {
            failingQuality = mid;
        }
    }
}

void Search::RefineScale(Candidate& best, double fittingScale, double failingScale) {
    for (int n = 0; n < kMaxRefineTrials; ++n) {
        const double mid = (fittingScale + failingScale) / 2;
        const Size size = SizeAt(mid);
        if (size == SizeAt(fittingScale) || size == SizeAt(failingScale)) return;  // a pixel apart
        const int span = std::max(SizeAt(failingScale).width - SizeAt(fittingScale).width,
                                  SizeAt(failingScale).height - SizeAt(fittingScale).height);
        std::optional<Candidate> c =
            Try(size, best.trial.quality, static_cast<int>(std::ceil(std::log2(std::max(span, 2)))) - 1);
        if (!c) return;
        if (c->trial.fits) {
            fittingScale = mid;
            best = std::move(*c);
        } else {
            failingScale = mid;
        }
    }
}

FitResult Search::Finish(FitStatus status, FitMode mode, std::optional<Candidate> best) {
    FitResult result;
    result.status = status;
    result.mode = mode;
    result.limitBytes = limit_;
    result.trials = std::move(trials_);
    if (status == FitStatus::Fitted && best) {
        if (!best->picture.hDIB()) {
            // The original fitted as it is: hand back a copy.
            if (!best->picture.Create(original_.Width(), original_.Height(), 0))
                return Finish(FitStatus::Failed, mode, std::nullopt);
            best->picture.LoadBlt(original_.View(), 0, 0);
        }
        result.picture = std::move(best->picture);
        result.jpeg = std::move(best->jpeg);
        result.quality = best->trial.quality;
    }
    switch (status) {
        case FitStatus::Fitted:
            if (mode == FitMode::WidthHeight)
                result.messages.push_back(ReducedSizeMessage(best->trial.bytes, request_.unit));
            break;
        case FitStatus::QualityUsedUp: result.messages.emplace_back(kFitQualityUsedUp); break;
        case FitStatus::MinimumUsedUp:
        case FitStatus::Failed: result.messages.emplace_back(kFitMinimumUsedUp); break;
        case FitStatus::Cancelled: break;
    }
    if (progress_ && status != FitStatus::Cancelled && !result.trials.empty())
        progress_({100, result.trials.back()});
    return result;
}

FitResult Search::Run() {
    limit_ = LimitBytes(request_.maxSize, request_.unit);
    if (!original_.hDIB() || limit_ <= 0 || request_.maxWidth <= 0 || request_.maxHeight <= 0 ||
        request_.minWidth <= 0 || request_.minHeight <= 0)
        return Finish(FitStatus::Failed, request_.startMode, std::nullopt);

    int32_t left = 0, top = 0;
    original_.GetBestFitInfo(request_.maxWidth, request_.maxHeight, false, left, top, base_.width,
                             base_.height);
    if (base_.width <= 0 || base_.height <= 0) return Finish(FitStatus::Failed, request_.startMode, std::nullopt);
    minimum_ = {std::min(request_.minWidth, base_.width), std::min(request_.minHeight, base_.height)};
    minScale_ = std::max(static_cast<double>(minimum_.width) / base_.width,
                         static_cast<double>(minimum_.height) / base_.height);

    int quality = std::clamp(JpegQualityFromName(request_.startQuality), 1, 100);
    double scale = 1.0;
    FitMode mode = request_.startMode;
    bool qualityDone = false, sizeDone = false;
    constexpr int kRefineGuess = 6;
    auto guess = [&] {
        const int q = qualityDone ? 0 : QualitySteps(quality);
        const int s = sizeDone ? 0 : CutsLeft(scale);
        return q + s + kRefineGuess;
    };

    std::optional<Candidate> first = Try(SizeAt(scale), quality, guess());
    if (!first) return Finish(stopped_, mode, std::nullopt);
    // Fitting at once cuts nothing, so it is not reported as a reduced size.
    if (first->trial.fits) return Finish(FitStatus::Fitted, FitMode::Quality, std::move(first));

    for (;;) {
        if (mode == FitMode::Quality) {
            const std::optional<int> lower = NextQualityBelow(quality);
            if (!lower) {
                qualityDone = true;
                if (sizeDone) return Finish(FitStatus::QualityUsedUp, mode, std::nullopt);
                mode = FitMode::WidthHeight;
                continue;
            }
            const Size size = SizeAt(scale);
            std::optional<Candidate> c = Try(size, *lower, guess());
            if (!c) return Finish(stopped_, mode, std::nullopt);
            if (c->trial.fits) {
                RefineQuality(*c, size, quality);
                if (stopped_ == FitStatus::Cancelled) return Finish(FitStatus::Cancelled, mode, std::nullopt);
                return Finish(FitStatus::Fitted, mode, std::move(c));
            }
            quality = *lower;
        } else {
            const Size current = SizeAt(scale);
            double next = scale;
            do {
                next = std::max(next * kCut, minScale_);
            } while (SizeAt(next) == current && next > minScale_);
            if (SizeAt(next) == current) {
                sizeDone = true;
                if (qualityDone) return Finish(FitStatus::MinimumUsedUp, mode, std::nullopt);
                mode = FitMode::Quality;
                continue;
            }
            std::optional<Candidate> c = Try(SizeAt(next), quality, guess());
            if (!c) return Finish(stopped_, mode, std::nullopt);
            if (c->trial.fits) {
                RefineScale(*c, next, scale);
                if (stopped_ == FitStatus::Cancelled) return Finish(FitStatus::Cancelled, mode, std::nullopt);
                return Finish(FitStatus::Fitted, mode, std::move(c));
            }
            scale = next;
        }
    }
}

}  // namespace

int64_t LimitBytes(double maxSize, FileSizeUnit unit) {
    const double bytes = std::floor(maxSize * (unit == FileSizeUnit::MB ? 1e6 : 1e3));
    if (!std::isfinite(bytes) || bytes <= 0) return 0;
    return bytes >= 9e18 ? static_cast<int64_t>(9e18) : static_cast<int64_t>(bytes);
}

std::optional<int> NextQualityBelow(int quality) {
    for (const int q : kNamedQualities)
        if (q < quality) return q;
    return std::nullopt;
}

FitResult FitToFileSize(const cDib& original, const FitRequest& request, const FitProgressFn& progress,
                        const std::atomic<bool>* cancel) {
    return Search(original, request, progress, cancel).Run();
}

std::string ReducedSizeMessage(int64_t bytes, FileSizeUnit unit) {
    const bool mb = unit == FileSizeUnit::MB;
    char text[64];
    std::snprintf(text, sizeof text, "%.2f %s", static_cast<double>(bytes) / (mb ? 1e6 : 1e3), mb ? "MB" : "KB");
    return std::string(kReducedSizeReached) + text;
}

void ShowFitMessages(const FitResult& result, MessageBox& messages) {
    for (const std::string& text : result.messages) messages.Show(text);
}

}  // namespace quorbel
