#pragma once

class ValueTransformerRegistry;

/// The application's value transformers by their class names: those of the numbers and icons, with
/// the window's pictures, and those of the theme's controls.
///
/// Thread: main
namespace ValueTransformers {

const ValueTransformerRegistry &shared();

} // namespace ValueTransformers
