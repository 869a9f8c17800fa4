import Velto

// A project's colour as a small dot, beside its name. The colour is the stored one; the swatch
// turns it into the colour of the current appearance.
Swatch {
    property string color

    hex: color
    size: 8
}
