#!/usr/bin/env python3
"""Makes documents like those that JSON libraries are commonly measured with: make_documents.py FOLDER

Used where no folder of real documents is given. They are the same on every machine, and like the real ones in size, in
the shape of their objects and in the share of texts, numbers and nulls, not in their content. What exists is left.
"""

import json
import pathlib
import random
import sys

WORDS = ("photo video music lake river mountain street morning evening light shadow people travel coffee garden winter "
         "summer concert theatre station window bridge harbour market museum library science letter paper").split()
WIDE = ("\u4eca\u65e5\u306f\u826f\u3044\u5929\u6c17\u3067\u3059\u306d"
        "\u516c\u5712\u3067\u6563\u6b69\u3057\u307e\u3057\u305f")


def sentence(source, count):
    return " ".join(source.choice(WORDS) for _ in range(count))


def status(source, depth):
    wide = "".join(source.choice(WIDE) for _ in range(source.randrange(20, 70)))
    number = source.randrange(10**17, 10**18)
    user = {"id": number // 3, "id_str": str(number // 3), "name": wide[:8], "screen_name": sentence(source, 1),
            "location": "", "description": wide + sentence(source, 4), "url": None, "protected": False,
            "followers_count": source.randrange(5000), "friends_count": source.randrange(3000),
            "created_at": "Sun Aug 31 00:29:15 +0000 2014", "utc_offset": None, "time_zone": None, "lang": "ja"}
    user.update({f"profile_{name}": f"http://example.org/images/{number}/{name}.png" for name in
                 ("background_image_url", "background_image_url_https", "image_url", "image_url_https", "banner_url")})
    user.update({f"profile_{name}_color": "C0DEED" for name in ("background", "link", "sidebar_border", "text")})
    one = {"metadata": {"result_type": "recent", "iso_language_code": "ja"}, "created_at": user["created_at"],
           "id": number, "id_str": str(number), "text": wide + wide[:40], "truncated": False,
           "source": "<a href=\"https://example.org/client\" rel=\"nofollow\">A client</a>",
           "in_reply_to_status_id": None, "in_reply_to_screen_name": source.choice([None, "someone"]), "user": user,
           "geo": None, "coordinates": None, "retweet_count": source.randrange(99), "favorite_count": 0,
           "entities": {"hashtags": [], "symbols": [], "urls": [], "user_mentions": [
               {"screen_name": sentence(source, 1), "name": wide[:6], "id": number // 7, "indices": [3, 15]}]},
           "favorited": False, "retweeted": False, "lang": "ja"}
    if depth > 0 and source.random() < 0.7:
        one["retweeted_status"] = status(source, depth - 1)
    return one


def messages(source):
    return {"statuses": [status(source, 1) for _ in range(145)], "search_metadata": {"count": 100, "max_id": 5}}


def catalogue(source):
    names = {str(205705993 + 6 * index): sentence(source, 2) for index in range(600)}
    areas = [{"areaId": 205705999 + index, "blockIds": []} for index in range(12)]
    performances = [{
        "eventId": 138586341 + index, "id": 339887544 + index, "logo": None, "name": None,
        "prices": [{"amount": 90250, "audienceSubCategoryId": 337100890, "seatCategoryId": 338937295 + price}
                   for price in range(5)],
        "seatCategories": [{"areas": areas[:source.randrange(6, 13)], "seatCategoryId": 338937295 + seat}
                           for seat in range(4)],
        "seatMapImage": None, "start": 1372701600000, "venueCode": "PLEYEL_PLEYEL"} for index in range(243)]
    events = {key: {"description": None, "id": int(key), "logo": "/images/UE0AAAAACEKo6QAAAAZDSVRN", "name": name,
                    "subTopicIds": [337184269, 337184283], "subjectCode": None, "topicIds": [324846099, 107888604]}
              for key, name in list(names.items())[:184]}
    return {"areaNames": names, "events": events, "performances": performances}


def projects(source):
    return {str(number): {"@context": "http://example.org", "@type": "SoftwareSourceCode", "name": sentence(source, 6),
                          "description": "\n\n".join(sentence(source, 60) for _ in range(5)),
                          "sponsor": {"@type": "Organization", "name": sentence(source, 2), "disambiguatingDescription":
                                      sentence(source, 12), "url": "http://www.example.org/"},
                          "author": {"@type": "Person", "name": sentence(source, 2)}} for number in range(1, 1300)}


def coordinate(source):
    return round(source.uniform(-140, 83), 6) + source.choice((0, 1e-14, 2e-14))


def outline(source):
    rings = [[[coordinate(source), coordinate(source)] for _ in range(source.randrange(5, 220))] for _ in range(480)]
    geometry = {"type": "Polygon", "coordinates": rings}
    return {"type": "FeatureCollection", "features": [{"type": "Feature", "properties": {"name": "Land"},
                                                       "geometry": geometry}]}


def numbers(source):
    return {"coordinates": [coordinate(source) for _ in range(111000)]}


DOCUMENTS = {"twitter": (messages, None), "citm_catalog": (catalogue, 4), "gsoc-2018": (projects, 2),
             "canada": (outline, None), "canada_flat": (numbers, None)}


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, (make, indent) in DOCUMENTS.items():
        path = folder / f"{name}.json"
        if not path.exists():
            text = json.dumps(make(random.Random(name)), ensure_ascii=False, indent=indent)
            path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    sys.exit(main())
