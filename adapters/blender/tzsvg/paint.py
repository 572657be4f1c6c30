"""What fills the polygons of a drawing: colours as sRGB with alpha. No Blender here."""

import re
import xml.etree.ElementTree

# CSS Color Module Level 4, named colours.
NAMED = {name: value for name, value in (pair.split("=") for pair in """
aliceblue=f0f8ff antiquewhite=faebd7 aqua=00ffff aquamarine=7fffd4 azure=f0ffff beige=f5f5dc bisque=ffe4c4 black=000000
blanchedalmond=ffebcd blue=0000ff blueviolet=8a2be2 brown=a52a2a burlywood=deb887 cadetblue=5f9ea0 chartreuse=7fff00
chocolate=d2691e coral=ff7f50 cornflowerblue=6495ed cornsilk=fff8dc crimson=dc143c cyan=00ffff darkblue=00008b
darkcyan=008b8b darkgoldenrod=b8860b darkgray=a9a9a9 darkgreen=006400 darkgrey=a9a9a9 darkkhaki=bdb76b
darkmagenta=8b008b darkolivegreen=556b2f darkorange=ff8c00 darkorchid=9932cc darkred=8b0000 darksalmon=e9967a
darkseagreen=8fbc8f darkslateblue=483d8b darkslategray=2f4f4f darkslategrey=2f4f4f darkturquoise=00ced1
darkviolet=9400d3 deeppink=ff1493 deepskyblue=00bfff dimgray=696969 dimgrey=696969 dodgerblue=1e90ff firebrick=b22222
floralwhite=fffaf0 forestgreen=228b22 fuchsia=ff00ff gainsboro=dcdcdc ghostwhite=f8f8ff gold=ffd700 goldenrod=daa520
gray=808080 green=008000 greenyellow=adff2f grey=808080 honeydew=f0fff0 hotpink=ff69b4 indianred=cd5c5c indigo=4b0082
ivory=fffff0 khaki=f0e68c lavender=e6e6fa lavenderblush=fff0f5 lawngreen=7cfc00 lemonchiffon=fffacd lightblue=add8e6
lightcoral=f08080 lightcyan=e0ffff lightgoldenrodyellow=fafad2 lightgray=d3d3d3 lightgreen=90ee90 lightgrey=d3d3d3
lightpink=ffb6c1 lightsalmon=ffa07a lightseagreen=20b2aa lightskyblue=87cefa lightslategray=778899 lightslategrey=778899
lightsteelblue=b0c4de lightyellow=ffffe0 lime=00ff00 limegreen=32cd32 linen=faf0e6 magenta=ff00ff maroon=800000
mediumaquamarine=66cdaa mediumblue=0000cd mediumorchid=ba55d3 mediumpurple=9370db mediumseagreen=3cb371
mediumslateblue=7b68ee mediumspringgreen=00fa9a mediumturquoise=48d1cc mediumvioletred=c71585 midnightblue=191970
mintcream=f5fffa mistyrose=ffe4e1 moccasin=ffe4b5 navajowhite=ffdead navy=000080 oldlace=fdf5e6 olive=808000
olivedrab=6b8e23 orange=ffa500 orangered=ff4500 orchid=da70d6 palegoldenrod=eee8aa palegreen=98fb98 paleturquoise=afeeee
palevioletred=db7093 papayawhip=ffefd5 peachpuff=ffdab9 peru=cd853f pink=ffc0cb plum=dda0dd powderblue=b0e0e6
purple=800080 rebeccapurple=663399 red=ff0000 rosybrown=bc8f8f royalblue=4169e1 saddlebrown=8b4513 salmon=fa8072
sandybrown=f4a460 seagreen=2e8b57 seashell=fff5ee sienna=a0522d silver=c0c0c0 skyblue=87ceeb slateblue=6a5acd
slategray=708090 slategrey=708090 snow=fffafa springgreen=00ff7f steelblue=4682b4 tan=d2b48c teal=008080 thistle=d8bfd8
tomato=ff6347 turquoise=40e0d0 violet=ee82ee wheat=f5deb3 white=ffffff whitesmoke=f5f5f5 yellow=ffff00 yellowgreen=9acd32
""".split())}

NUMBER = r"[-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?"
GROUP = re.compile(r'g=id\{(\d+)\}parent\{(\w+)\}(?:attributes\{((?:[^}"]|"[^"]*")*)\})?;')
ATTRIBUTE = re.compile(r'([^\s="]+)="([^"]*)"')


def colour(text):
    """(red, green, blue), 0 to 1; None for what is no colour."""
    text = text.strip().lower()
    text = "#" + NAMED[text] if text in NAMED else text
    if re.fullmatch(r"#[0-9a-f]{3}", text):
        text = "#" + "".join(digit * 2 for digit in text[1:])
    if re.fullmatch(r"#[0-9a-f]{6}", text):
        return tuple(int(text[i:i + 2], 16) / 255 for i in (1, 3, 5))
    if text.startswith("rgb"):
        parts = re.findall(NUMBER + "%?", text)[:3]
        if len(parts) == 3:
            return tuple(min(max(float(part.rstrip("%")) / (100 if part.endswith("%") else 255), 0), 1) for part in parts)
    return None


def share(text, other=1.0):
    """An opacity."""
    found = re.fullmatch(rf"\s*({NUMBER})(%?)\s*", text or "")
    return min(max(float(found.group(1)) / (100 if found.group(2) else 1), 0), 1) if found else other


def declared(text):
    """The declarations of a style attribute."""
    return {name.strip(): value.strip() for name, _, value in (part.partition(":") for part in (text or "").split(";"))}


class Groups:
    """The groups around polygons, from the package's records."""

    def __init__(self, records):
        self.found = {}
        for number, parent, attributes in GROUP.findall(records or ""):
            values = dict(ATTRIBUTE.findall(attributes))
            values.update(declared(values.get("style")))
            self.found[number] = (parent, values)

    def inherited(self, number, name):
        while number in self.found:
            number, values = self.found[number]
            if name in values:
                return values[name]
        return None

    def opacity(self, number):
        """Of all groups around, multiplied."""
        out = 1.0
        while number in self.found:
            number, values = self.found[number]
            out *= share(values.get("opacity"))
        return out


class Gradients:
    """The mean colours of the gradients in the package's definitions."""

    def __init__(self, definitions):
        self.stops, self.links = {}, {}
        try:
            root = xml.etree.ElementTree.fromstring(
                '<d xmlns:xlink="http://www.w3.org/1999/xlink">' + re.sub(r"\s[\w-]+:(?!href)[\w-]+=\"[^\"]*\"", "", definitions or "")
                + "</d>")
        except xml.etree.ElementTree.ParseError:
            return
        for element in root.iter():
            name = element.get("id")
            if name is None or not element.tag.endswith("Gradient"):
                continue
            self.stops[name] = [stop for stop in map(self.stop, element) if stop]
            link = element.get("{http://www.w3.org/1999/xlink}href") or element.get("href") or ""
            self.links[name] = link.strip().lstrip("#")

    @staticmethod
    def stop(element):
        values = dict(element.attrib)
        values.update(declared(values.get("style")))
        found = colour(values.get("stop-color", "black"))
        return found and (*found, share(values.get("stop-opacity")))

    def mean(self, name):
        seen = set()
        while name in self.stops and not self.stops[name] and name not in seen:
            seen.add(name)
            name = self.links[name]
        stops = self.stops.get(name)
        return tuple(sum(part) / len(stops) for part in zip(*stops)) if stops else None


class Fills:
    """What fills each polygon of an item: (red, green, blue, alpha), or None for no fill."""

    def __init__(self, item):
        self.mesh = item.mesh
        self.groups = Groups(item.channels.get("groupdefs"))
        self.gradients = Gradients(item.channels.get("svgdefs"))
        self.known = {}

    def of_all(self):
        """One for each polygon."""
        columns = zip(*(self.mesh.column(name) for name in ("FILL", "FILO", "OPAC", "PGRP", "STYL")))
        return [self.of(key) for key in columns]

    def of(self, key):
        if key not in self.known:
            self.known[key] = self.found(*key)
        return self.known[key]

    def found(self, fill, fill_opacity, opacity, group, style):
        own = declared(style)

        def inherited(value, name, initial):
            for text in (value, own.get(name)):
                if text and text != "inherit":
                    return text
            return self.groups.inherited(group, name) or initial
        fill = inherited(fill, "fill", "black")
        alpha = share(inherited(fill_opacity, "fill-opacity", "1")) * share(opacity) * self.groups.opacity(group)
        if fill == "none" or alpha == 0:
            return None
        link = re.match(r"url\(\s*[\"']?#([^)\"']*)", fill)
        if link:
            mean = self.gradients.mean(link.group(1)) or (0.5, 0.5, 0.5, 1.0)     # a pattern: grey
            return (*mean[:3], mean[3] * alpha)
        if fill.lower() == "currentcolor":
            fill = inherited(None, "color", "black")
        found = colour(fill)
        return (*(found or (0.0, 0.0, 0.0)), alpha)
