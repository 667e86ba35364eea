#pragma once

/// Whether the session lets its screens be covered, and what stands on them be blurred. Where it
/// does not, an alert that says why opens, one at a time; the caller does not wait for it.
bool CGRequestScreenCaptureAccess();
