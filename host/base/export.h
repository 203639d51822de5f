#pragma once

/// Marks a public class or function; everything else in the libraries is hidden.
#define WAINSCOT_API __attribute__((visibility("default")))
